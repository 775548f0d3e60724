#include "diagram/handles.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_points.hpp"
#include "diagram/picking.hpp"
#include "diagram/properties/property_menus.hpp"
#include "display/colours.hpp"
#include "display/screen_state.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

constexpr int grab_colour = 1, properties_colour = 4, hold_colour = 2;
constexpr int reach = 1;      // of a square, columns beside its point
constexpr int most_rows = 3;  // of it
constexpr int dot_reach = 2;  // of a dot, whose corners are missing

struct Pixel {
  int x = 0, y = 0;
  std::uint32_t colour = 0;
  std::uint32_t covered = empty_slot;
};

std::vector<Pixel> pixels;  // in the order in which they are drawn
bool are_laid = false;

void add_rectangle(int x1, int x2, int y, int rows, int colour) {
  for (int row = y; row < y + rows; ++row) {
    for (int column = x1; column <= x2; ++column)
      pixels.push_back({column, row, colour_pixel(colour)});
  }
}

void add_square(int x, int y, int rows = most_rows) {
  add_rectangle(x - reach, x + reach, y, rows, grab_colour);
}

void add_dot(const Hold& hold, int x, int y) {
  if (hold.figure == 0) return;
  for (int row = -dot_reach; row <= dot_reach; ++row) {
    const int width = std::abs(row) == dot_reach ? dot_reach - 1 : dot_reach;
    add_rectangle(x - width, x + width, y + row, 1, hold_colour);
  }
}

// Where part_at finds something: rows below the head, above the end, around the middle.
void add_handles_of(const Vobj& figure) {
  const int rows = std::min(tolerance_of(figure), most_rows);
  const FigureAnchor centre = centre_of(figure);
  if (has_property_menu(figure)) {
    const int far = properties_reach - 1, near = reach + 1;
    add_rectangle(figure.x1 - far, figure.x1 - near, figure.y1, rows, properties_colour);
    add_rectangle(figure.x1 + near, figure.x1 + far, figure.y1, rows, properties_colour);
  }
  add_square(figure.x1, figure.y1, rows);
  add_square(figure.x2, figure.y2 - rows + 1, rows);
  add_square(centre.x, centre.y - 1);
  for (const FigureAnchor& bend : figure.bends)
    add_square(bend.x, bend.y - 1);
  if (figure.kind != FigureKind::arc) return;
  add_dot(figure.from, figure.x1, figure.y1);
  add_dot(figure.to, figure.x2, figure.y2);
}

void find_handles() {
  pixels.clear();
  are_laid = vobjmode == mode_pointer;
  if (!are_laid) return;
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (is_seen(*figure)) add_handles_of(*figure);
  }
}

bool holds_diagram(const Rect& rect) {
  const Rect area = diagram_area();
  const Rect part = intersection(rect, area);
  return part.x1 == area.x1 && part.y1 == area.y1 && part.x2 == area.x2 && part.y2 == area.y2;
}

}  // namespace

void lift_handles(const Rect& rect) {
  const auto clip = kept_figure_area();
  set_figure_area(intersection(rect, figure_area()));
  for (auto pixel = pixels.rbegin(); pixel != pixels.rend(); ++pixel)
    erase_kept_pixel(VectorMode::clipped, pixel->x, pixel->y, pixel->covered);
}

void lay_handles(const Rect& rect) {
  if (holds_diagram(rect)) find_handles();
  const auto clip = kept_figure_area();
  set_figure_area(intersection(rect, figure_area()));
  for (Pixel& pixel : pixels)
    draw_kept_pixel(VectorMode::clipped, pixel.x, pixel.y, pixel.colour, pixel.covered);
}

void show_handles() {
  if (are_laid == (vobjmode == mode_pointer)) return;
  const CanvasPaint laid_at_the_end(diagram_area(), PaintOn::figures);
}

}  // namespace torve
