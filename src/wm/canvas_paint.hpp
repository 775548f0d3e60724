// Painting on the canvas beneath window objects.
#pragma once

#include <cstdint>
#include <vector>

#include "base/rect.hpp"

namespace torve {

/// Whether what is painted goes beneath the figures, too, or is a figure itself.
enum class PaintOn { base, figures };

/// While one lives, the window objects that meet its rectangle (and those above them) are off the
/// canvas, and so are the figures if the base is painted: what is painted goes beneath them. At its
/// end the figures are laid and the objects put back as they looked, bottom up. The books are
/// untouched. Scopes of figures may be nested.
class CanvasPaint {
 public:
  explicit CanvasPaint(const Rect& rect, PaintOn layer = PaintOn::base);
  ~CanvasPaint();
  CanvasPaint(const CanvasPaint&) = delete;
  CanvasPaint& operator=(const CanvasPaint&) = delete;

 private:
  struct Lifted {
    int id;
    std::vector<std::uint8_t> picture;
  };
  Rect rect_;
  std::vector<Lifted> lifted_;  // topmost first
  PaintOn layer_;
};

/// How the parts of figures inside a rectangle are taken off the canvas and laid on it again, and
/// how they are drawn over what is there, which does not become what they cover. Marks lie above
/// the figures and are off the canvas as long as any scope lives.
struct FigureHooks {
  void (*lift)(const Rect& rect) = nullptr;
  void (*lay)(const Rect& rect) = nullptr;
  void (*refresh)(const Rect& rect) = nullptr;
  void (*lift_marks)(const Rect& rect) = nullptr;
  void (*lay_marks)(const Rect& rect) = nullptr;
};
void set_figure_hooks(const FigureHooks& hooks);

/// Draws the figures over what is on the canvas, where the rectangle meets the area open to them.
void refresh_figures(const Rect& rect);

}  // namespace torve
