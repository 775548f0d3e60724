// Arcs: the ways of a network, and what their ends hold on to.
//
// An arc goes from its first point over its bends to its second one, in straight pieces; the last
// one that shows carries the head. An end that holds on to a figure keeps its distance from it.
#pragma once

#include <functional>
#include <vector>

#include "diagram/model/figures.hpp"
#include "diagram/model/vobj.hpp"

namespace torve {

/// All its points, from the first to the second.
[[nodiscard]] std::vector<FigureAnchor> points_of_arc(const FigureRecord& arc);

/// The middle of the piece in the middle, of two the first one.
[[nodiscard]] FigureAnchor middle_of_arc(const FigureRecord& arc);

/// As figure_segments: the head's two strokes first, then the pieces from the last to the first.
/// `place` has the ends.
[[nodiscard]] std::vector<FigureSegment> arc_segments(const FigureRecord& arc,
                                                      const FigurePlace& place);

/// The segments of any figure at its own place; empty for labels and circles.
[[nodiscard]] std::vector<FigureSegment> segments_of(const FigureRecord& figure);

/// How far a point lies from a figure's nearest segment, pixels; infinite when it has none.
[[nodiscard]] double ink_distance(const FigureRecord& figure, int x, int y);

/// How far from a figure's ink a point may lie to hold on to it, pixels.
inline constexpr int hold_reach = 12;

/// The figure whose ink is nearest to a point, and not farther away than that; of several the
/// uppermost. Null when there is none.
[[nodiscard]] const Vobj* figure_to_hold(int x, int y);

/// How a point holds on to a figure; to none when that is null. Each coordinate is counted from the
/// point of the figure that is nearer, from the first one if both are as near.
[[nodiscard]] Hold hold_on(const FigureRecord* figure, int x, int y);

/// Where a point is that holds on to this figure.
[[nodiscard]] FigureAnchor held_point(const Hold& hold, const FigureRecord& figure);

/// Moves the ends of an arc, or a text, that hold on to a figure to where they are now. Those of
/// figures that are not there let go. `figure_with` knows a figure by its serial number.
void follow_holds(FigureRecord& follower,
                  const std::function<const FigureRecord*(int serial)>& figure_with);
/// The figures are those of the list.
void follow_holds(Vobj& follower);

/// The arcs and texts that hold on to a figure, in the order of the list.
[[nodiscard]] std::vector<Vobj*> followers_of(const Vobj& figure);

}  // namespace torve
