// The views around what a pane shows: changed by gestures, remembered, and had back.
//
// The first change of a pane starts from what a line of a tool drew. The panes may be coupled: then
// what is done to the time axis of one signal is done to the others.
#pragma once

#include <cstddef>

#include "app/plot/pane_view.hpp"
#include "app/plot/view_points.hpp"

namespace torve {

/// Makes a view from a closer view of a file with so many points.
using ViewChange = PaneView (*)(const PaneView& view, std::size_t points, int column,
                                double amount);

/// Changes what pane 0 .. 2 shows. `column`: of the pointer, pixels of the screen. A file that
/// cannot be read is said in the strip, and the pane stays.
void change_view(int pane, ViewChange change, int column, double amount, std::uint32_t time);

/// A signal's or spectrum's points first .. last over the whole pane.
void show_stretch(int pane, double first, double last, std::uint32_t time);

/// What pane 0 .. 2 shows, with its full scale even where a line of a tool drew it, whose points
/// are `loaded`.
[[nodiscard]] PaneView scaled_view(int pane, const ViewPoints& loaded);

/// A spectrum in decibels, or in powers again; nothing happens to a signal.
void toggle_decibels(int pane);

/// The view before the last change; changes of one kind that follow each other within 0.7 s count
/// as one. `time`, here and above: of the event, milliseconds.
void show_view_before(int pane);

/// What the line of a tool drew.
void show_told_view(int pane);

/// Couples the panes in time, or lets them go; whether they are coupled now.
bool toggle_coupling();

/// No pane is coupled, nothing is remembered.
void reset_views();

}  // namespace torve
