#include "wm/background.hpp"

#include <algorithm>
#include <cstdio>
#include <new>
#include <span>

#include "base/errors.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "draw/pixels.hpp"
#include "draw/plane_copy.hpp"
#include "pool/pool.hpp"
#include "wm/stacking.hpp"

namespace torve {

std::vector<std::uint8_t> fgbuffer;
std::vector<std::uint8_t> bgbuffer;

namespace {

constexpr int bad_id_in_remove = 8;  // illegal_pointer codes
constexpr int bad_id_in_move = 10;
constexpr int no_picture_buffer = 100;
constexpr int out_of_memory = 2;
constexpr std::uint32_t outline_pixel = 0;

// One line more than the picture has: copies by whole bytes may read behind its last row.
std::size_t background_bytes(const WdObject& object) {
  return static_cast<std::size_t>(object.background_rows + 1) *
         static_cast<std::size_t>(object.background_line_bytes);
}

int id_of(const WdObject& object) {
  return static_cast<int>(&object - wd_object) + 1;
}

// Where the object's kind keeps the pixels under it; null when the record holds them, as it does
// for every icon.
std::vector<std::uint8_t>* kept_by_kind(const WdObject& object) {
  const WdKind* kind = is_icon(object) ? nullptr : kind_of(object);
  if (kind == nullptr || kind->covered == nullptr) return nullptr;
  return &kind->covered(id_of(object));
}

std::span<std::uint8_t> background_of(const WdObject& object) {
  return {covered_pixels(object), background_bytes(object)};
}

void fill_in_sizes(WdObject& object) {
  if (object.background_row_bytes < 0) object.background_row_bytes = plane_row_bytes(object.width);
  if (object.background_line_bytes < 0) {
    object.background_line_bytes = gplanes * object.background_row_bytes;
  }
  if (object.background_rows < 0) object.background_rows = object.height;
}

bool obtain_block(WdObject& object) {
  if (object.background == nullptr) {
    object.background =
        static_cast<std::uint8_t*>(balloc(static_cast<int>(background_bytes(object))));
  }
  return object.background != nullptr;
}

bool resize_kept(std::vector<std::uint8_t>& kept, std::size_t bytes) try {
  if (kept.size() != bytes) kept = std::vector<std::uint8_t>(bytes);
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

bool obtain_background(WdObject& object) {
  std::vector<std::uint8_t>* kept = kept_by_kind(object);
  return kept == nullptr ? obtain_block(object) : resize_kept(*kept, background_bytes(object));
}

void save_canvas(WdObject& object) {
  save_buf2c(object.x, object.y, object.width, object.height, background_layout(object),
             background_of(object));
  object.painted = true;
}

void restore_canvas(WdObject& object) {
  draw_buf2c(object.x, object.y, object.width, object.height, background_layout(object),
             background_of(object));
  object.painted = false;
}

// Whose picture fgbuffer holds; 0: nobody's.
int picture_owner = 0;

struct OutlinePixel {
  int x, y;
  std::uint32_t pixel;
};
std::vector<OutlinePixel> outline;

void draw_outline_run(const Rect& run) {
  for (int y = run.y1; y < run.y2; ++y) {
    for (int x = run.x1; x < run.x2; ++x) {
      outline.push_back({x, y, plot_point2(x, y, outline_pixel)});
    }
  }
}

}  // namespace

int init_win(int, int) {
  for (WdObject& object : wd_object)
    object = {};
  picture_owner = 0;
  outline.clear();
  return 0;
}

int free_win(int, int) {
  return 0;
}

bool allocate_staging() try {
  fgbuffer.assign(staging_bytes, 0);
  bgbuffer.assign(staging_bytes, 0);
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

void release_staging() {
  fgbuffer = {};
  bgbuffer = {};
  picture_owner = 0;
}

int make_background(WdObject& object, bool sizes_only) {
  fill_in_sizes(object);
  if (sizes_only) return 0;
  if (!obtain_background(object)) return out_of_memory;
  save_canvas(object);
  return 0;
}

int remove_background(int id) {
  if (!is_wd_id(id)) {
    illegal_pointer(bad_id_in_remove);
    return 1;
  }
  WdObject& object = wd(id);
  if (covered_pixels(object) == nullptr) return 0;
  if (object.painted) restore_canvas(object);
  if (!has(object.flags, WdFlags::off_screen)) release_background(object);
  return 0;
}

std::uint8_t* covered_pixels(const WdObject& object) {
  std::vector<std::uint8_t>* kept = kept_by_kind(object);
  if (kept == nullptr) return object.background;
  return kept->empty() ? nullptr : kept->data();
}

void release_background(WdObject& object) {
  b_free(object.background);
  object.background = nullptr;
  const WdKind* kind = kind_of(object);
  if (kind != nullptr && kind->covered != nullptr) kind->covered(id_of(object)) = {};
}

int change_background(int id) {
  if (term == text_console) {
    std::printf("change_background\n");
    return 0;
  }
  WdObject sized = wd(id);
  sized.background = nullptr;
  sized.background_row_bytes = sized.background_line_bytes = sized.background_rows = -1;
  fill_in_sizes(sized);
  std::vector<std::uint8_t>* kept = kept_by_kind(wd(id));
  if (kept == nullptr) {
    if (!obtain_block(sized)) return 1;
    release_background(wd(id));
  } else {
    if (!resize_kept(*kept, background_bytes(sized))) return 1;
    b_free(wd(id).background);  // of the icon that the object has been
  }
  wd(id) = sized;
  return 0;
}

PlaneLayout background_layout(const WdObject& object) {
  return {gplanes, object.background_row_bytes, object.background_line_bytes};
}

void take_picture_off(int id) {
  WdObject& object = wd(id);
  if (object.painted && covered_pixels(object) != nullptr) restore_canvas(object);
}

int fg_to_fgbuf(int id) try {
  if (!is_wd_id(id)) {
    illegal_pointer(bad_id_in_move);
    return 1;
  }
  WdObject& object = wd(id);
  picture_owner = 0;
  if (fgbuffer.empty()) {
    std::printf("no fgbuf\n");
    static_cast<void>(getch());
    illegal_pointer(no_picture_buffer);
    return 1;
  }
  fgbuffer.resize(std::max(fgbuffer.size(), background_bytes(object)));
  save_buf2c(object.x, object.y, object.width, object.height, background_layout(object), fgbuffer);
  picture_owner = id;
  return 0;
} catch (const std::bad_alloc&) {
  return 1;
}

void movingPicture(int x, int y, int mode, int id) {
  if (mode == 2) return take_picture_off(id);
  WdObject& object = wd(id);
  if (covered_pixels(object) == nullptr || picture_owner != id) return;
  if (mode == 1 && object.painted) {
    if (object.x == x && object.y == y) return;
    restore_canvas(object);
  }
  object.x = x;
  object.y = y;
  keep_on_canvas(object, false);
  save_canvas(object);
  draw_buf2c(object.x, object.y, object.width, object.height, background_layout(object), fgbuffer);
}

void draw_outline(const Rect& rect) {
  outline.clear();
  draw_outline_run({rect.x1, rect.y1, rect.x2, rect.y1 + 1});
  draw_outline_run({rect.x1, rect.y2 - 1, rect.x2, rect.y2});
  draw_outline_run({rect.x1, rect.y1 + 1, rect.x1 + 1, rect.y2 - 1});
  draw_outline_run({rect.x2 - 1, rect.y1 + 1, rect.x2, rect.y2 - 1});
}

void erase_outline() {
  for (const OutlinePixel& saved : outline)
    drawpixel2b(saved.x, saved.y, saved.pixel);
  outline.clear();
}

}  // namespace torve
