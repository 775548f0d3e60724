#include "figure/diagram_panel.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

#include "diagram/model/arcs.hpp"
#include "diagram/model/diagram_input.hpp"
#include "diagram/model/label_letters.hpp"

namespace torve {

namespace {

constexpr double letter_size = 11;  // pixels
constexpr double base_line = 9;     // below the upper edge of a text, pixels
constexpr double line_width = 1;    // pixels

std::string label_text(std::string_view bytes) {
  std::string text;
  std::string plain;
  for (const char character : bytes) {
    const char* const letter = national_letter(character);
    if (letter == nullptr) {
      plain += character;
      continue;
    }
    text += text_of_bytes(plain) + letter;
    plain.clear();
  }
  return text + text_of_bytes(plain);
}

// What a figure is made of, pixels.
struct Shape {
  Drawing parts;
  Box box;
  bool is_empty = true;

  void include(const Box& part) {
    box = is_empty ? part
                   : Box{std::min(box.x1, part.x1), std::min(box.y1, part.y1),
                         std::max(box.x2, part.x2), std::max(box.y2, part.y2)};
    is_empty = false;
  }
};

void add_strokes(Shape& shape, const FigureRecord& figure) {
  Lines strokes = {.ink = {figure.colour, line_width}, .lines = {}};
  for (const FigureSegment& part : segments_of(figure)) {
    const VectorSegment& s = part.segment;
    strokes.lines.push_back({{1.0 * s.x1, 1.0 * s.y1}, {1.0 * s.x2, 1.0 * s.y2}});
    const auto [left, right] = std::minmax(s.x1, s.x2);
    const auto [top, bottom] = std::minmax(s.y1, s.y2);
    shape.include({1.0 * left, 1.0 * top, 1.0 * right, 1.0 * bottom});
  }
  if (!strokes.lines.empty()) shape.parts.items.emplace_back(strokes);
}

void add_circle(Shape& shape, const FigureRecord& figure) {
  const auto& [x1, y1, x2, y2] = place_of(figure);
  const Point centre = {(x1 + x2) / 2.0, (y1 + y2) / 2.0};
  const double radius = std::abs(x2 - x1) / 2.0;
  shape.parts.items.emplace_back(Circle{{figure.colour, line_width}, centre, radius});
  shape.include({centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius});
}

void add_text(Shape& shape, const FigureRecord& figure) {
  const std::string text = label_text(figure.text);
  const Point at = {1.0 * figure.x1, figure.y1 + base_line};
  if (text.empty()) return;
  shape.parts.items.emplace_back(
      Text{.at = at, .text = text, .size = letter_size, .colour = figure.colour});
  shape.include({at.x, 1.0 * figure.y1, at.x + widest(text, letter_size), at.y + 3});
}

void add_figure(Shape& shape, const FigureRecord& figure) {
  const FigureKindRow& row = row_of(figure.kind);
  if (!shows(figure)) return;
  if (row.drawn_as == DrawnAs::strokes || row.drawn_as == DrawnAs::arc) add_strokes(shape, figure);
  if (row.drawn_as == DrawnAs::circle) add_circle(shape, figure);
  if (row.drawn_as == DrawnAs::text) add_text(shape, figure);
}

Shape shape_of(const KeptDiagram& diagram) {
  Shape shape;
  for (const KeptFigure& figure : diagram)
    add_figure(shape, figure.record);
  return shape;
}

// From pixels of the canvas to the page.
struct Placing {
  double scale, x, y;

  [[nodiscard]] Point at(const Point& p) const { return {x + p.x * scale, y + p.y * scale}; }
  [[nodiscard]] Ink at(const Ink& ink) const { return {ink.colour, ink.width * scale}; }

  Item operator()(const Lines& given) const {
    Lines lines = {at(given.ink), {}};
    for (const Line& line : given.lines)
      lines.lines.push_back({at(line.from), at(line.to)});
    return lines;
  }
  Item operator()(const Curve& curve) const { return curve; }  // diagrams have none
  Item operator()(const Circle& circle) const {
    return Circle{at(circle.ink), at(circle.centre), circle.radius * scale};
  }
  Item operator()(Text text) const {
    text.at = at(text.at);
    text.size *= scale;
    return text;
  }
};

}  // namespace

Outcome read_diagram_to_draw(const std::string& name, KeptDiagram* diagram) {
  Outcome outcome = read_diagram_file(name, diagram);
  if (!outcome.is_done() || !shape_of(*diagram).is_empty) return outcome;
  return {.cause = Cause::nothing_to_draw, .name = name};
}

Box diagram_box(const KeptDiagram& diagram) {
  return shape_of(diagram).box;
}

void draw_diagram_panel(Drawing& drawing, const KeptDiagram& diagram, const Box& frame) {
  const Shape shape = shape_of(diagram);
  const double width = std::max(shape.box.width(), 1.0);
  const double height = std::max(shape.box.height(), 1.0);
  const double scale =
      std::min({frame.width() / width, frame.height() / height, most_points_a_pixel});
  const Placing placing = {scale,
                           (frame.x1 + frame.x2) / 2 - (shape.box.x1 + shape.box.x2) / 2 * scale,
                           (frame.y1 + frame.y2) / 2 - (shape.box.y1 + shape.box.y2) / 2 * scale};
  for (const Item& item : shape.parts.items)
    drawing.items.push_back(std::visit(placing, item));
}

}  // namespace torve
