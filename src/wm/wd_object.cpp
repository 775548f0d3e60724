#include "wm/wd_object.hpp"

#include <algorithm>
#include <array>
#include <type_traits>

#include "base/errors.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_icon.hpp"

namespace torve {

WdObject wd_object[wd_object_count];
WdAction wd_actions[wd_object_count + 1];
int cxoff = 0, cyoff = 0;

namespace {

constexpr int most_kinds = 16;

struct KnownKind {
  std::uint32_t kind = kind_free;
  WdKind functions;
};
std::array<KnownKind, most_kinds> kinds;
void (*freed_handler)(int id) = nullptr;

const WdKind* find_kind(std::uint32_t kind) {
  for (const KnownKind& known : kinds) {
    if (known.kind == kind && kind != kind_free) return &known.functions;
  }
  return nullptr;
}

// Calls one of the kind's functions; `refused` when the id, the slot or the kind is nobody's.
template <typename Result, typename... More>
Result dispatch(Result (*WdKind::*which)(int id, More...), Result (*for_icon)(int id, More...),
                Result refused, int id, std::type_identity_t<More>... more) {
  if (!is_wd_id(id)) return refused;
  // Kinds draw with limits and colours of their own; who comes next finds the old ones.
  const Kept kept(X1_min, Y1_min, X1_max, Y1_max, truncate1, xkoord, ykoord, bgcol);
  if (is_icon(wd(id))) return for_icon(id, more...);
  const WdKind* kind = kind_of(wd(id));
  return kind != nullptr && kind->*which != nullptr ? (kind->*which)(id, more...) : refused;
}

bool put_fresh(int id) {
  keep_on_canvas(wd(id), true);
  if (put_one_wd_object(id) != 0) {
    free_one_wd_object(id);
    return false;
  }
  enter_books(id);
  return true;
}

bool put_hidden(int id) {
  if (put_one_wd_object(id) != 0) return false;
  enter_books(id);
  return true;
}

// At its full size, above all others.
bool put_icon(int id) {
  lift_out(id);
  const bool restored = restore_icon(id);
  enter_books(id);
  return restored;
}

bool put(int id) {
  WdObject& object = wd(id);
  if (has(object.flags, WdFlags::fresh)) return put_fresh(id);
  if (has(object.flags, WdFlags::off_screen) && !object.painted) return put_hidden(id);
  if (is_icon(object) && is_eligible(object)) return put_icon(id);
  if (is_eligible(object)) bring_any_to_top(id, 0);
  return refresh_one_wd_object(id) == 0;
}

template <typename Spared>
void free_from_top(int lowest, Spared spared) {
  for (int id = wd_object_count; id >= lowest; --id) {
    if (wd(id).kind == kind_free || spared(wd(id))) continue;
    free_one_wd_object(id);
  }
}

}  // namespace

void register_wd_kind(std::uint32_t kind, const WdKind& functions) {
  const auto same = [kind](const KnownKind& known) { return known.kind == kind; };
  auto slot = std::find_if(kinds.begin(), kinds.end(), same);
  if (slot == kinds.end()) {
    slot = std::find_if(kinds.begin(), kinds.end(),
                        [](const KnownKind& known) { return known.kind == kind_free; });
  }
  if (slot != kinds.end()) *slot = {kind, functions};
}

const WdKind* kind_of(const WdObject& object) {
  return find_kind(object.kind & ~kind_icon_bit);
}

void fill_jmptable_b(int slot, WdAction action) {
  if (slot >= 0 && slot <= default_action_slot) wd_actions[slot] = action;
}

void keep_on_canvas(WdObject& object, bool to_cell) {
  object.x = std::max(0, std::min(object.x, X__max + 1 - object.width));
  object.y = std::max(0, std::min(object.y, Y__max + 1 - object.height));
  if (to_cell && has(object.flags, WdFlags::snap)) object.x &= ~7;
}

WdObject& start_wd_object(int id, std::uint32_t kind, const Rect& place, WdFlags flags,
                          std::initializer_list<int> colours) {
  free_one_wd_object(id);
  WdObject& object = wd(id);
  object = {};
  object.kind = kind;
  object.x = place.x1;
  object.y = place.y1;
  object.width = place.width();
  object.height = place.height();
  object.flags = flags | WdFlags::fresh;
  std::size_t i = 0;
  for (const int colour : colours)
    object.colours.at(i++) = static_cast<std::uint8_t>(colour);
  return object;
}

int put_one_wd_object(int id) {
  return dispatch(&WdKind::put, paint_icon, false, id) ? 0 : 1;
}

int refresh_one_wd_object(int id) {
  return dispatch(&WdKind::refresh, paint_icon, false, id) ? 0 : 1;
}

Served serve_object(int id, const PointerEvent& press) {
  return dispatch(&WdKind::serve, serve_icon, Served{.last = press}, id, press);
}

int serve_wd_objects(int index) {
  return static_cast<int>(serve_object(index + 1, present_pointer()).command);
}

void scroll_object(int id, int lines) {
  const Kept kept(X1_min, Y1_min, X1_max, Y1_max, truncate1, xkoord, ykoord, bgcol);
  kind_of(wd(id))->scroll(id, lines);
}

Served ask_to_move(const WdObject& object, const PointerEvent& press) {
  cxoff = press.x - object.x;
  cyoff = press.y - object.y;
  return {Command::move, press};
}

void set_freed_handler(void (*handler)(int id)) {
  freed_handler = handler;
}

const char* icon_text_of(int id) {
  const WdKind* kind = kind_of(wd(id));
  return kind != nullptr && kind->icon_text != nullptr ? kind->icon_text(id) : nullptr;
}

void free_one_wd_object(int id) {
  if (!is_wd_id(id) || wd(id).kind == kind_free) return;
  WdObject& object = wd(id);
  if (is_eligible(object)) lift_out(id);
  object.flags = object.flags | WdFlags::off_screen;  // its background is given back in one place
  remove_background(id);
  release_background(object);
  const WdKind* kind = kind_of(object);
  if (kind != nullptr && kind->free_memory != nullptr) kind->free_memory(id);
  object = {};
  if (freed_handler != nullptr) freed_handler(id);
}

void move_object(int id, int x, int y) {
  WdObject& object = wd(id);
  const bool booked = is_eligible(object);
  const bool shown = object.painted;
  if (booked) lift_out(id);
  take_picture_off(id);
  object.x = x;
  object.y = y;
  keep_on_canvas(object, true);
  if (shown) put_one_wd_object(id);
  if (booked) enter_books(id);
}

int put_wd_objects(int first, int last) {
  for (int id = std::max(first, 1); id <= std::min(last, wd_object_count); ++id) {
    if (wd(id).kind != kind_free && !put(id)) return 1;
  }
  return 0;
}

void free_wd_objects() {
  free_from_top(1, [](const WdObject&) { return false; });
}

int free_wd_objects_gt1() {
  free_from_top(2, [](const WdObject& object) { return has(object.flags, WdFlags::permanent); });
  return 0;
}

int free_wd_objects_gt1_u() {
  free_from_top(2, [](const WdObject&) { return false; });
  return 0;
}

void hide_wd_object(int id) {
  if (term == text_console || !is_wd_id(id)) return;
  const WdObject& object = wd(id);
  if (!is_eligible(object) || is_icon(object)) return;
  lift_out(id);
  remove_background(id);
}

void hide_errormsg() {
  hide_wd_object(message_window_id);
}

}  // namespace torve
