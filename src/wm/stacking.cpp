#include "wm/stacking.hpp"

#include <cstddef>
#include <cstdio>
#include <span>
#include <vector>

#include "base/errors.hpp"
#include "display/screen_state.hpp"
#include "draw/plane_copy.hpp"
#include "wm/background.hpp"
#include "wm/overlap.hpp"

namespace torve {

namespace {

constexpr int bits_per_word = 32;
// illegal_pointer codes
constexpr int bad_id = 311;
constexpr int free_slot = 312;
constexpr int not_put = 313;
constexpr int hidden = 314;
constexpr int nothing_at_point = 32;
constexpr int too_many = 33;

std::size_t over_word(int id) {
  return static_cast<std::size_t>((id - 1) / bits_per_word);
}

std::uint32_t over_bit(int id) {
  return 1U << ((id - 1) % bits_per_word);
}

bool intersect(const WdObject& a, const WdObject& b) {
  return !intersection(rect_of(a), rect_of(b)).empty();
}

template <typename Change>
int for_bits_of(int id, Change change) {
  if (!is_wd_id(id)) return 1;
  for (int other = 1; other <= wd_object_count; ++other) {
    if (other == id || !is_eligible(wd(other)) || !intersect(wd(other), wd(id))) continue;
    change(wd(other).over[over_word(id)], over_bit(id));
  }
  return 0;
}

// The first eligible uncovered object by id; 0 for none.
int first_uncovered() {
  for (int id = 1; id <= wd_object_count; ++id) {
    if (is_eligible(wd(id)) && over_is_zero(id - 1) != 0) return id;
  }
  return 0;
}

bool refuse(int code, const char* format, int id) {
  std::printf(format, id);
  illegal_pointer(code);
  return true;
}

bool cannot_be_ordered(int id) {
  if (!is_wd_id(id)) return refuse(bad_id, "find_stacking_order: invalid id=%d\n", id);
  if (wd(id).kind == kind_free)
    return refuse(free_slot, "find_stacking_order: id=%d is free\n", id);
  if (has(wd(id).flags, WdFlags::fresh)) {
    return refuse(not_put, "find_stacking_order: id=%d is not put\n", id);
  }
  return false;
}

// A plane row of the pixels under an object.
std::uint8_t* row_of(const WdObject& object, std::uint8_t* covered, int y, int plane) {
  return covered + (y - object.y) * object.background_line_bytes +
         plane * object.background_row_bytes;
}

// What lies under the target in `rect` becomes what lies under the owner there, and what the
// canvas shows becomes what lies under the target.
void copy_part_of_bg(const WdObject& owner, const WdObject& target, const Rect& rect) {
  std::uint8_t* under_owner = covered_pixels(owner);
  std::uint8_t* under_target = covered_pixels(target);
  if (under_owner == nullptr || under_target == nullptr) return;
  std::vector<std::uint8_t> shown(
      static_cast<std::size_t>(plane_row_bytes(rect.width()) * gplanes));
  const PlaneLayout row_layout = {gplanes, plane_row_bytes(rect.width()),
                                  plane_row_bytes(rect.width()) * gplanes};
  for (int y = rect.y1; y < rect.y2; ++y) {
    save_buf2c(rect.x1, y, rect.width(), 1, row_layout, shown);
    for (int plane = 0; plane < gplanes; ++plane) {
      std::uint8_t* from = row_of(target, under_target, y, plane);
      const int from_bit = rect.x1 - target.x;
      bitcpy(row_of(owner, under_owner, y, plane), from, rect.x1 - owner.x, from_bit, rect.width());
      bitcpy(from, shown.data() + plane * row_layout.plane_stride, from_bit, 0, rect.width());
    }
  }
}

// The part of the last object of the order that the others cover, as disjoint rectangles, each
// owned by the lowest object that covers it: lower objects come first and keep their parts.
std::vector<Cover> covers_of_last(const StackingOrder& order) {
  const Rect target = rect_of(wd(order.ids[static_cast<std::size_t>(order.last)]));
  std::vector<Cover> list;
  for (int i = order.last - 1; i >= 0; --i) {
    const int owner = order.ids[static_cast<std::size_t>(i)];
    const Rect common = intersection(rect_of(wd(owner)), target);
    if (common.empty()) continue;
    for (const Rect& part : update_list(list, common))
      list.push_back({part, owner});
  }
  return list;
}

// Hands the background of the last object of the order to the objects above it.
void draw_away(const StackingOrder& order) {
  const int target = order.ids[static_cast<std::size_t>(order.last)];
  for (const Cover& cover : covers_of_last(order))
    copy_part_of_bg(wd(cover.owner), wd(target), cover.rect);
}

// The last object of an order that has been taken out, above all the others.
void raise_last(const StackingOrder& order, bool repaint) {
  const int target = order.ids[static_cast<std::size_t>(order.last)];
  draw_away(order);
  put_back_order(order, order.last - 1);
  if (repaint) refresh_one_wd_object(target);
  enter_books(target);
}

}  // namespace

void zero_over(int index) {
  wd_object[index].over = {};
}

int over_is_zero(int index) {
  return wd_object[index].over == OverSet{} ? 1 : 0;
}

int update_over(int id) {
  return for_bits_of(id, [](std::uint32_t& word, std::uint32_t bit) { word ^= bit; });
}

int force_over(int id) {
  return for_bits_of(id, [](std::uint32_t& word, std::uint32_t bit) { word &= ~bit; });
}

bool lies_over(int id, const WdObject& below) {
  return (below.over[over_word(id)] & over_bit(id)) != 0;
}

void leave_books(int id) {
  wd(id).flags = wd(id).flags | WdFlags::off_screen;
  update_over(id);
  fetch_background(id);
}

void enter_books(int id) {
  zero_over(id - 1);
  wd(id).flags = wd(id).flags & ~(WdFlags::fresh | WdFlags::off_screen);
  update_over(id);
  rest_background(id);
}

void lift_out(int id) {
  bring_any_to_top(id, 0);
  leave_books(id);
}

int any_window_under(int x, int y, int* count) {
  int found = 0;
  for (int id = 1; id <= wd_object_count; ++id) {
    if (!is_eligible(wd(id)) || !rect_of(wd(id)).contains(x, y)) continue;
    if (over_is_zero(id - 1) != 0) {
      found = id;
    } else {
      ++*count;
    }
  }
  return found;
}

bool an_object_is_at(int x, int y) {
  int covered = 0;
  return any_window_under(x, y, &covered) != 0 || covered > 0;
}

int get_top_card(int x1, int y1, int x2, int y2) {
  for (int id = 1; id <= wd_object_count; ++id) {
    if (is_eligible(wd(id)) && over_is_zero(id - 1) != 0 &&
        !intersection(rect_of(wd(id)), {x1, y1, x2, y2}).empty()) {
      return id;
    }
  }
  return 0;
}

int get_any_card(int x1, int y1, int x2, int y2) {
  for (int id = 1; id <= wd_object_count; ++id) {
    if (is_eligible(wd(id)) && !intersection(rect_of(wd(id)), {x1, y1, x2, y2}).empty()) return id;
  }
  return 0;
}

int get_one_under(int id) {
  for (int other = 1; other <= wd_object_count; ++other) {
    if (other != id && is_eligible(wd(other)) && over_is_zero(other - 1) != 0 &&
        intersect(wd(other), wd(id))) {
      return other;
    }
  }
  return 0;
}

int find_stacking_order(int id, StackingOrder* order) {
  if (cannot_be_ordered(id)) return 1;
  for (order->last = 0;; ++order->last) {
    const int top = first_uncovered();
    order->ids[static_cast<std::size_t>(order->last)] = top == 0 ? id : top;
    if (top != 0) {
      leave_books(top);
      if (top == id) return 0;
      continue;
    }
    // The sets are at fault: nothing is uncovered, and yet the wanted object was not reached.
    if (has(wd(id).flags, WdFlags::off_screen)) {
      refuse(hidden, "find_stacking_order: id=%d is hidden\n", id);
    }
    wd(id).flags = wd(id).flags | WdFlags::off_screen;
    zero_over(id - 1);
    force_over(id);
    return 0;
  }
}

int find_stacking_order_by_coord(int x, int y, StackingOrder* order) {
  for (order->last = 0;; ++order->last) {
    if (order->last > wd_object_count) {
      illegal_pointer(too_many);
      order->last = wd_object_count;
      return 0;
    }
    const int top = first_uncovered();
    if (top == 0) {
      std::printf("find_stacking_order_by_coord, could not find a window at (x,y)\n");
      illegal_pointer(nothing_at_point);
      --order->last;
      return 1;
    }
    leave_books(top);
    order->ids[static_cast<std::size_t>(order->last)] = top;
    if (rect_of(wd(top)).contains(x, y)) return 0;
  }
}

int put_back_order(const StackingOrder& order, int k) {
  for (int i = k; i >= 0; --i) {
    enter_books(order.ids[static_cast<std::size_t>(i)]);
  }
  return 0;
}

int bring_to_top(int x, int y) {
  int covered = 0;
  const int top = any_window_under(x, y, &covered);
  if (top != 0 || covered == 0) return top;
  StackingOrder order;
  if (find_stacking_order_by_coord(x, y, &order) != 0) {
    put_back_order(order, order.last);
    return 0;
  }
  const int target = order.ids[static_cast<std::size_t>(order.last)];
  if (has(wd(target).flags, WdFlags::permanent)) {
    put_back_order(order, order.last);
    return 0;
  }
  raise_last(order, true);
  return target;
}

int bring_id_to_top(int id, int refresh) {
  if (!is_wd_id(id) || !is_eligible(wd(id))) return 0;
  if (has(wd(id).flags, WdFlags::permanent) && over_is_zero(id - 1) == 0) return 0;
  return bring_any_to_top(id, refresh);
}

int bring_any_to_top(int id, int refresh) {
  if (!is_wd_id(id) || !is_eligible(wd(id))) return 0;
  if (over_is_zero(id - 1) != 0) return id;
  StackingOrder order;
  if (find_stacking_order(id, &order) != 0) return 0;
  if (order.ids[static_cast<std::size_t>(order.last)] != id) {
    std::printf("error in bring_id_to_top\n");
  }
  raise_last(order, refresh != 0);
  return id;
}

}  // namespace torve
