// Parts of rectangles that other rectangles leave free.
#pragma once

#include <vector>

#include "base/rect.hpp"

namespace torve {

/// A rectangle and the id of the object whose background it belongs to.
struct Cover {
  Rect rect;
  int owner = 0;
};

/// A without B: up to four disjoint pieces. Side strips take the full height of A; the pieces
/// above and below take the columns between them. In order: left, below, above, right where A
/// has a strip on both sides or on the left; right, below, above where only on the right; above,
/// below where on neither side. A itself when they do not intersect.
[[nodiscard]] std::vector<Rect> make_new_rectangles(const Rect& a, const Rect& b);

/// The pieces without what a rectangle covers of them.
[[nodiscard]] std::vector<Rect> substract_one_cover(const Rect& cover,
                                                    const std::vector<Rect>& pieces);

/// The parts of `rect` that no rectangle of `list` covers: what is new when it joins the list.
[[nodiscard]] std::vector<Rect> update_list(const std::vector<Cover>& list, const Rect& rect);

}  // namespace torve
