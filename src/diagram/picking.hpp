// Which part of a figure lies under the pointer.
#pragma once

#include <cstddef>

#include "diagram/model/vobj.hpp"
#include "display/input.hpp"

namespace torve {

enum class FigurePart {
  none,
  middle,      // grabs the figure as a whole; second button: its Cut, Copy, Color menu
  end,         // first button only: grabs the second point
  head,        // first button only: grabs the first point
  properties,  // second button only: opens the property menu
  bend         // first button only, of an arc: grabs it
};

/// How many columns beside a point, and how many rows, are the point's.
inline constexpr int grab_reach = 2;        // columns beside it that no longer hit it
inline constexpr int properties_reach = 5;  // the same for the property menu
[[nodiscard]] int tolerance_of(const Vobj& figure);

/// The part of a placed figure that a press is on. All lie within two columns of their
/// point (five for properties) and within a tenth of the figure's height, two rows at least.
[[nodiscard]] FigurePart part_at(const Vobj& figure, const PointerEvent& press);

/// Whether a stroke of a figure that is seen passes within four pixels of a position.
[[nodiscard]] bool a_figure_lies_at(int x, int y);

/// The first placed figure in the list with such a part, and which; null when there is none.
struct PickedFigure {
  Vobj* figure = nullptr;
  FigurePart part = FigurePart::none;
  std::size_t bend = 0;  // which one, from 0
};
[[nodiscard]] PickedFigure picked_at(const PointerEvent& press);

}  // namespace torve
