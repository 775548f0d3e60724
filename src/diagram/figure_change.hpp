// Changing figures that stand on the canvas.
#pragma once

#include <utility>
#include <vector>

#include "diagram/figure_points.hpp"
#include "diagram/model/vobj.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

/// While one lives, a figure is the current one, the topmost, and off the canvas with its label:
/// its points and colours may be changed. At its end both are drawn, the label having followed the
/// figure, and so are the arcs and texts that hold on to it, which have followed it, too. The
/// change is noted for undo.
class FigureChange {
 public:
  explicit FigureChange(Vobj* figure);
  ~FigureChange();
  FigureChange(const FigureChange&) = delete;
  FigureChange& operator=(const FigureChange&) = delete;

 private:
  void finish();
  [[nodiscard]] Rect room_of_all() const;

  CanvasPaint beneath_windows_;
  Vobj* figure_;
  FigureAnchor anchor_;                                    // before the change
  std::vector<std::pair<Vobj*, FigureAnchor>> followers_;  // with theirs
  Rect room_;  // that was cleared, when there are followers
};

/// Makes a figure the current one and brings it to the top, below its label only.
void raise_figure(Vobj* figure);

/// Takes a figure off the canvas and out of the diagram, with its label and property menu. What
/// holds on to it lets go.
void cut_figure(Vobj* figure);

}  // namespace torve
