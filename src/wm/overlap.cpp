#include "wm/overlap.hpp"

namespace torve {

std::vector<Rect> make_new_rectangles(const Rect& a, const Rect& b) {
  if (intersection(a, b).empty()) return {a};
  const bool left = a.x1 < b.x1;
  const bool right = a.x2 > b.x2;
  const int from = left ? b.x1 : a.x1;  // columns between the side strips
  const int to = right ? b.x2 : a.x2;
  const Rect left_strip = {a.x1, a.y1, b.x1, a.y2};
  const Rect right_strip = {b.x2, a.y1, a.x2, a.y2};
  std::vector<Rect> pieces;
  const auto add_above = [&] {
    if (a.y1 < b.y1) pieces.push_back({from, a.y1, to, b.y1});
  };
  const auto add_below = [&] {
    if (a.y2 > b.y2) pieces.push_back({from, b.y2, to, a.y2});
  };
  if (!left && !right) {
    add_above();
    add_below();
    return pieces;
  }
  pieces.push_back(left ? left_strip : right_strip);
  add_below();
  add_above();
  if (left && right) pieces.push_back(right_strip);
  return pieces;
}

std::vector<Rect> substract_one_cover(const Rect& cover, const std::vector<Rect>& pieces) {
  std::vector<Rect> left;
  for (const Rect& piece : pieces) {
    const std::vector<Rect> parts = make_new_rectangles(piece, cover);
    left.insert(left.end(), parts.begin(), parts.end());
  }
  return left;
}

std::vector<Rect> update_list(const std::vector<Cover>& list, const Rect& rect) {
  std::vector<Rect> parts = {rect};
  for (const Cover& cover : list)
    parts = substract_one_cover(cover.rect, parts);
  return parts;
}

}  // namespace torve
