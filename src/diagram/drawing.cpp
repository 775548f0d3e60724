#include "diagram/drawing.hpp"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "diagram/label_points.hpp"
#include "diagram/model/arcs.hpp"
#include "display/colours.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "eps/eps_stream.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

constexpr std::size_t first_label_slot = 20;  // the slots before it once held the text
constexpr int label_ink = 0;

std::span<std::uint32_t> slots_of(Vobj& figure, std::size_t first, std::size_t limit) {
  const std::span<std::uint32_t> all(figure.saved);
  if (first >= all.size()) return {};
  return all.subspan(first, std::min(limit, all.size() - first));
}

std::vector<FigureSegment> segments_at(const Vobj& figure, const FigurePlace& place) {
  return row_of(figure.kind).drawn_as == DrawnAs::arc ? arc_segments(figure, place)
                                                      : figure_segments(figure.kind, place);
}

// Arcs have as many slots as they need; they are empty while an arc is off the canvas, which is
// when it changes.
void make_room(Vobj& figure, const std::vector<FigureSegment>& segments) {
  if (row_of(figure.kind).drawn_as != DrawnAs::arc) return;
  std::size_t needed = 0;
  for (const FigureSegment& part : segments)
    needed = std::max(needed, part.first_slot + part.slot_limit);
  if (needed > figure.saved.size()) figure.saved.resize(needed, empty_slot);
}

// Labels and circles: a list of points, some of which coincide.
std::vector<PixelPosition> points_of(const Vobj& figure, const FigurePlace& place) {
  const FigureKindRow& row = row_of(figure.kind);
  const bool has_points = row.drawn_as == DrawnAs::circle || row.drawn_as == DrawnAs::text;
  if (!has_points || !row.shows(place)) return {};
  return row.drawn_as == DrawnAs::circle ? circle_points(place) : label_points(figure.text, place);
}

std::span<std::uint32_t> point_slots(Vobj& figure, std::size_t count) {
  const bool is_text = row_of(figure.kind).drawn_as == DrawnAs::text;
  return slots_of(figure, is_text ? first_label_slot : 0, count);
}

void erase(VectorMode mode, Vobj& figure, const FigurePlace& place) {
  for (const FigureSegment& part : segments_at(figure, place)) {
    erase_vector(mode, part.segment, slots_of(figure, part.first_slot, part.slot_limit));
  }
  const std::vector<PixelPosition> points = points_of(figure, place);
  const std::span<std::uint32_t> slots = point_slots(figure, points.size());
  for (std::size_t i = slots.size(); i-- > 0;) {
    erase_kept_pixel(mode, points[i].x, points[i].y, slots[i]);
  }
}

// A name is text there, whatever it looks like: it must not end the string that it stands in.
std::string escaped_for_eps(const char* text) {
  std::string escaped;
  for (; *text != 0; ++text) {
    if (*text == '(' || *text == ')' || *text == '\\') escaped += '\\';
    escaped += *text;
  }
  return escaped;
}

void write_label_to_eps(const Vobj& figure, const FigurePlace& place) {
  const Kept cursor(xkoord, ykoord);
  xkoord = place.x1;
  ykoord = place.y1;
  textn1(label_font, target_eps, escaped_for_eps(figure.text).c_str(), label_ink, white_colour);
}

// The line through a circle's points and back to the first.
void write_circle_to_eps(const std::vector<PixelPosition>& points) {
  PixelPosition from = points.back();
  for (const PixelPosition& to : points) {
    write_eps_segment(from.x, from.y, to.x, to.y, Y1_max - Y1_min);
    from = to;
  }
}

void write_points_to_eps(const Vobj& figure, const FigurePlace& place,
                         const std::vector<PixelPosition>& points) {
  if (points.empty()) return;
  if (row_of(figure.kind).drawn_as == DrawnAs::text) {
    write_label_to_eps(figure, place);
  } else {
    write_circle_to_eps(points);
  }
}

void draw(VectorMode mode, Vobj& figure, const FigurePlace& place) {
  const std::vector<FigureSegment> parts = segments_at(figure, place);
  make_room(figure, parts);
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
    draw_vector(mode, part->segment, figure.colour,
                slots_of(figure, part->first_slot, part->slot_limit));
  }
  const std::vector<PixelPosition> points = points_of(figure, place);
  if (mode == VectorMode::eps) write_points_to_eps(figure, place, points);
  const std::span<std::uint32_t> slots = point_slots(figure, points.size());
  for (std::size_t i = 0; i < slots.size(); ++i) {
    draw_kept_pixel(mode, points[i].x, points[i].y, figure.colour, slots[i]);
  }
}

bool is_on_canvas(const Vobj& figure) {
  return (figure.phase & phase_on_canvas) != 0;
}

bool is_in_area(const Vobj& figure) {
  return !intersection(room_of(figure), figure_area()).empty();
}

// Around everything that the figure draws, which for pictograms is not the box of its two points.
Rect box_of(const Vobj& figure) {
  Rect box;
  const auto include = [&box](int x, int y) { box = bounding_box(box, {x, y, x + 1, y + 1}); };
  for (const FigureSegment& part : segments_of(figure)) {
    include(part.segment.x1, part.segment.y1);
    include(part.segment.x2, part.segment.y2);
  }
  for (const auto& [x, y] : points_of(figure, place_of(figure)))
    include(x, y);
  return box;
}

}  // namespace

Rect room_of(const Vobj& figure) {
  constexpr int pictogram = 30;  // pixels beside the points, for heads and fixed shapes, too
  constexpr int widest_glyph = 64;
  int x1 = std::min(figure.x1, figure.x2), x2 = std::max(figure.x1, figure.x2);
  int y1 = std::min(figure.y1, figure.y2), y2 = std::max(figure.y1, figure.y2);
  if (figure.kind == FigureKind::label) x2 = figure.x1 + label_text_length * widest_glyph;
  for (const FigureAnchor& bend : figure.bends) {
    x1 = std::min(x1, bend.x), x2 = std::max(x2, bend.x);
    y1 = std::min(y1, bend.y), y2 = std::max(y2, bend.y);
  }
  // A circle is as high as it is wide.
  const int more = figure.kind == FigureKind::vcircle ? x2 - x1 + pictogram : pictogram;
  return {x1 - more, y1 - more, x2 + more, y2 + more};
}

Rect diagram_area() {
  return figure_area();
}

void draw_vobj(VectorMode mode, Vobj* figure, const FigurePlace& new_place,
               const FigurePlace& old_place, int flags) {
  if ((flags & figure_erase) != 0) erase(mode, *figure, old_place);
  if ((flags & figure_draw) != 0) draw(mode, *figure, new_place);
}

void draw_vobj(VectorMode mode, Vobj* figure, int flags) {
  draw_vobj(mode, figure, place_of(*figure), place_of(*figure), flags);
}

int pick_up_cvobj() {
  if (cvobj == nullptr || cvobj == lastvobj) return 1;
  const auto clip = kept_figure_area();
  set_figure_area(intersection(box_of(*cvobj), figure_area()));
  for (Vobj* figure = lastvobj; figure != cvobj->prev; figure = figure->prev) {
    if (is_on_canvas(*figure) && is_in_area(*figure))
      draw_vobj(VectorMode::clipped, figure, figure_erase);
  }
  for (Vobj* figure = cvobj->next; figure != nullptr; figure = figure->next) {
    if (is_on_canvas(*figure) && is_in_area(*figure))
      draw_vobj(VectorMode::clipped, figure, figure_draw);
  }
  if (is_on_canvas(*cvobj)) draw_vobj(VectorMode::clipped, cvobj, figure_draw);
  unlink_vobj(cvobj);
  link_last_vobj(cvobj);
  return 0;
}

int refresh_cvobj(int xmin, int ymin, int xmax, int ymax) {
  const auto clip = kept_figure_area();
  set_figure_area({xmin, ymin, xmax, ymax});
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (!is_on_canvas(*figure)) continue;
    // What is drawn over here, a window's inside, is not what the figure covers on the canvas.
    const std::vector<std::uint32_t> covered = figure->saved;
    draw_vobj(VectorMode::clipped, figure, figure_draw);
    figure->saved = covered;
  }
  return 0;
}

void lift_figures(const Rect& rect) {
  const auto clip = kept_figure_area();
  set_figure_area(intersection(rect, figure_area()));
  for (Vobj* figure = lastvobj; figure != nullptr; figure = figure->prev) {
    if (is_on_canvas(*figure) && is_in_area(*figure))
      draw_vobj(VectorMode::clipped, figure, figure_erase);
  }
}

void lay_figures(const Rect& rect) {
  const auto clip = kept_figure_area();
  set_figure_area(intersection(rect, figure_area()));
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (is_on_canvas(*figure) && is_in_area(*figure))
      draw_vobj(VectorMode::clipped, figure, figure_draw);
  }
}

void free_vector_objects(VectorMode mode) {
  const CanvasPaint beneath_windows(diagram_area(), PaintOn::figures);
  while (lastvobj != nullptr) {
    if (is_on_canvas(*lastvobj)) draw_vobj(mode, lastvobj, figure_erase);
    remove_vobj(lastvobj);
  }
  cvobj = nullptr;
}

}  // namespace torve
