#include "wm/canvas_paint.hpp"

#include <array>
#include <new>

#include "display/screen_state.hpp"
#include "draw/plane_copy.hpp"
#include "wm/background.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

FigureHooks figures;
int scopes = 0;  // that live now

using Marks = std::array<bool, wd_object_count + 1>;

// Painted, but out of the books: being served, above everything else.
bool is_lifted(const WdObject& object) {
  return object.kind != kind_free && object.painted && !is_eligible(object);
}

bool meet(const WdObject& object, const Rect& rect) {
  return !intersection(rect_of(object), rect).empty();
}

bool covers_a_marked_one(int id, const Marks& marked) {
  for (int other = 1; other <= wd_object_count; ++other) {
    if (!marked[static_cast<std::size_t>(other)]) continue;
    if (is_lifted(wd(id)) ? meet(wd(id), rect_of(wd(other))) : lies_over(id, wd(other)))
      return true;
  }
  return false;
}

// The objects that meet the rectangle, and whatever lies above one of them.
Marks objects_to_lift(const Rect& rect) {
  Marks marked = {};
  for (bool grown = true; grown;) {
    grown = false;
    for (int id = 1; id <= wd_object_count; ++id) {
      bool& mark = marked[static_cast<std::size_t>(id)];
      const WdObject& object = wd(id);
      // What is not painted has been lifted by a scope around this one.
      const bool held = covered_pixels(object) != nullptr || is_on_file(object);
      if (mark || !object.painted || !held) continue;
      mark = meet(object, rect) || covers_a_marked_one(id, marked);
      grown = grown || mark;
    }
  }
  return marked;
}

// One of the marked objects that no other marked one lies above; 0 when none is marked.
int topmost(const Marks& marked) {
  for (int id = 1; id <= wd_object_count; ++id) {
    if (marked[static_cast<std::size_t>(id)] && is_lifted(wd(id))) return id;
  }
  for (int id = 1; id <= wd_object_count; ++id) {
    if (!marked[static_cast<std::size_t>(id)]) continue;
    bool covered = false;
    for (int other = 1; other <= wd_object_count && !covered; ++other) {
      covered = marked[static_cast<std::size_t>(other)] && lies_over(other, wd(id));
    }
    if (!covered) return id;
  }
  return 0;
}

bool shows_figures(int id) {
  const WdKind* kind = is_icon(wd(id)) ? nullptr : kind_of(wd(id));
  return kind != nullptr && kind->shows_figures != nullptr && kind->shows_figures(id);
}

// At the end of a scope, which cannot fail. Without memory some are missing; then the reserve is
// gone, too, and the program ends.
void lay(void (*what)(const Rect& rect), const Rect& rect) try {
  if (what != nullptr) what(rect);
} catch (const std::bad_alloc&) {
  return;
}

}  // namespace

CanvasPaint::CanvasPaint(const Rect& rect, PaintOn layer) : rect_(rect), layer_(layer) {
  Marks marked = objects_to_lift(rect);
  for (int id = topmost(marked); id != 0; id = topmost(marked)) {
    marked[static_cast<std::size_t>(id)] = false;
    const WdObject& object = wd(id);
    std::vector<std::uint8_t> picture(static_cast<std::size_t>(object.height) *
                                      static_cast<std::size_t>(object.background_line_bytes));
    save_buf2c(object.x, object.y, object.width, object.height, background_layout(object), picture);
    fetch_background(id);
    take_picture_off(id);
    lifted_.push_back({id, std::move(picture)});
  }
  if (scopes++ == 0 && figures.lift_marks != nullptr) figures.lift_marks(rect_);
  if (layer_ == PaintOn::base && figures.lift != nullptr) figures.lift(rect_);
}

CanvasPaint::~CanvasPaint() {
  if (layer_ == PaintOn::base) lay(figures.lay, rect_);
  if (--scopes == 0) lay(figures.lay_marks, rect_);
  for (auto lifted = lifted_.rbegin(); lifted != lifted_.rend(); ++lifted) {
    WdObject& object = wd(lifted->id);
    make_background(object, false);
    if (is_eligible(object)) rest_background(lifted->id);
    if (shows_figures(lifted->id)) {
      refresh_one_wd_object(lifted->id);
      continue;
    }
    draw_buf2c(object.x, object.y, object.width, object.height, background_layout(object),
               lifted->picture);
  }
}

void set_figure_hooks(const FigureHooks& hooks) {
  figures = hooks;
}

void refresh_figures(const Rect& rect) {
  const Rect part = intersection(rect, figure_area());
  if (figures.refresh != nullptr && !part.empty()) figures.refresh(part);
}

}  // namespace torve
