// Thin lines over a pane that leave no trace.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/rect.hpp"

namespace torve {

/// A horizontal or vertical line or bar, pixels of the screen, in a colour number.
struct OverlayLine {
  Rect rect;
  int colour = 0;
};

/// Lines that belong to the base as long as they are shown: beneath figures and windows. Nobody may
/// paint there meanwhile.
class Overlay {
 public:
  /// Shows lines in place of those before, if any.
  void show(std::span<const OverlayLine> lines);

  /// Puts back what was there.
  void clear();

  [[nodiscard]] bool is_shown() const { return !covered_.empty(); }

 private:
  struct Covered {
    Rect rect;
    std::vector<std::uint8_t> pixels;
  };
  void draw(const OverlayLine& line);

  std::vector<Covered> covered_;  // in the order in which they were drawn
};

}  // namespace torve
