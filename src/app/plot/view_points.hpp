// The points that a view draws, and what they mean.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "app/plot/pane_view.hpp"
#include "app/signal/kept_file.hpp"
#include "base/outcome.hpp"

namespace torve {

/// The whole file of a view. Holds what it points to.
struct ViewPoints {
  KeptFile file;                                   // its values
  std::shared_ptr<const std::vector<float>> made;  // null where each value is a point
  int decibels = 0;  // the range, where points are heights in decibels; 0: values

  /// What is drawn: the values, sums of `step` of them, or decibels above the lower end.
  [[nodiscard]] std::span<const float> points() const { return made ? *made : file->values; }
};

/// Reads the view's file, or takes what is kept of it. Not done as keep_file, and nothing_to_draw
/// for a view of nothing and for a file without a point.
Outcome load_points(const PaneView& view, ViewPoints* loaded);

/// The value that a line of a tool draws this view to: the largest of the points that it takes.
[[nodiscard]] double full_scale_of(const PaneView& view, const ViewPoints& loaded);

/// Gives back what is kept; whether there was anything.
bool release_kept_points();

}  // namespace torve
