// Which object lies above which.
//
// There is no stack list: bit i of j's over set says that i lies above j and their rectangles
// intersect. An eligible object whose set is empty is uncovered. The sets are kept by toggling, so
// an object enters and leaves the books at the top only, and in pairs.
#pragma once

#include <array>

#include "wm/wd_object.hpp"

namespace torve {

/// Ids from the topmost down; `last` is the index of the last one.
struct StackingOrder {
  std::array<int, wd_object_count + 1> ids = {};
  int last = 0;
};

/// By index, id - 1.
void zero_over(int index);
[[nodiscard]] int over_is_zero(int index);

/// Toggles id's bit in the over set of every other eligible object that it intersects. Returns 1
/// for an id outside 1 .. 128, else 0.
int update_over(int id);

/// Clears id's bit there instead, to repair the sets.
int force_over(int id);

/// Whether object `id` lies above another one that is in the books, and overlaps it.
[[nodiscard]] bool lies_over(int id, const WdObject& below);

/// An object that nothing lies above leaves the books: it is off-screen and in no over set. One
/// that is painted above everything comes back into them; in between its background may rest in a
/// file. The only two ways in and out.
void leave_books(int id);
void enter_books(int id);

/// Raises an object of the books without repainting it and takes it out of them. What lay above it
/// has then inherited the pixels under it, which would otherwise be stamped over it.
void lift_out(int id);

/// The uncovered object at a point, the last in id order, or 0; adds the covered ones to *count.
[[nodiscard]] int any_window_under(int x, int y, int* count);

/// Whether any eligible object lies at a point.
[[nodiscard]] bool an_object_is_at(int x, int y);

/// Takes uncovered objects out of the books, one after the other, until the wanted one is out.
/// Returns 0, or 1 after the error was shown (311 bad id, 312 free, 313 not put).
int find_stacking_order(int id, StackingOrder* order);

/// The same until one is out that lies at the point; 1 after illegal_pointer(32) when none does.
/// What has been taken out stays so.
int find_stacking_order_by_coord(int x, int y, StackingOrder* order);

/// Puts the objects with index k down to 0 back into the books. Returns 0.
int put_back_order(const StackingOrder& order, int k);

/// Raises the object at a point and returns its id; 0 when there is none or it is permanent.
int bring_to_top(int x, int y);

/// Raises an object, repainting it unless `refresh` is 0. Returns its id, or 0 when it is not on
/// the canvas or is permanent and covered.
int bring_id_to_top(int id, int refresh);

/// The same for permanent objects too; hiding and freeing need it.
int bring_any_to_top(int id, int refresh);

// Not used by the workbench itself.

/// The first eligible uncovered object that intersects a rectangle, by id; any eligible one; the
/// first other uncovered one that intersects an object. 0 for none.
[[nodiscard]] int get_top_card(int x1, int y1, int x2, int y2);
[[nodiscard]] int get_any_card(int x1, int y1, int x2, int y2);
[[nodiscard]] int get_one_under(int id);

}  // namespace torve
