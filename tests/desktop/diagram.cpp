#include "desktop/diagram.hpp"

namespace torve::desktop {

namespace {

constexpr int steps = 4;  // of a drag
constexpr int box = 4;    // from a menu's corner to its box
constexpr int property_menu_width = 240;

struct Stroke {
  PaletteLine tool;
  Point from, to;
};

constexpr Stroke network[] = {
    {PaletteLine::box, frame_corner, frame_end},
    {PaletteLine::telephone, {80, 170}, {100, 200}},
    {PaletteLine::arrow, {110, 193}, {190, 193}},
    {PaletteLine::queue, {205, 150}, {205, 240}},
    {PaletteLine::arrow, {212, 193}, {290, 193}},
    {PaletteLine::node, cpu_head, cpu_end},
    {PaletteLine::node, disk_head, disk_end},
    {PaletteLine::arrow, {310, 210}, {490, 210}},
    {PaletteLine::arrow, way_back_from, way_back_to},
};

}  // namespace

void DiagramEditor::open_palette(Point at) {
  click(at.x, at.y, 3);
  settle();
}

void DiagramEditor::choose(PaletteLine line) {
  run_by_double_press(palette, static_cast<int>(line));
}

void DiagramEditor::choose(FilesLine line) {
  choose(PaletteLine::files);
  run_by_double_press(diagram_files, static_cast<int>(line));
  close(diagram_files);
}

void DiagramEditor::draw(PaletteLine tool, Point from, Point to) {
  choose(tool);
  drag(from, to);
}

void DiagramEditor::drag(Point from, Point to) {
  press(from.x, from.y);
  settle();
  for (int i = 1; i <= steps; ++i) {
    server().move_pointer(window(), from.x + (to.x - from.x) * i / steps,
                          from.y + (to.y - from.y) * i / steps);
    settle();
  }
  release();
  settle();
}

Tool DiagramEditor::open_properties(Point head) {
  choose(PaletteLine::pointer);
  click(head.x, head.y + 1, 3);
  settle();
  return {0, head.x & ~7, head.y + 1, property_menu_width};
}

void DiagramEditor::run_figure_line(Point middle, FigureLine line) {
  click(middle.x, middle.y, 3);
  settle();
  run_by_double_press({0, middle.x & ~7, middle.y, 80}, static_cast<int>(line));
}

void DiagramEditor::apply(const Tool& menu) {
  click(menu.x + box, menu.y + box);
  settle();
}

void DiagramEditor::colour(Point middle, const std::string& number) {
  choose(PaletteLine::pointer);
  click(middle.x, middle.y, 3);
  settle();
  const Tool menu = {0, middle.x & ~7, middle.y, 80};
  edit(menu, static_cast<int>(FigureLine::color), 6, number);
  run_by_double_press(menu, static_cast<int>(FigureLine::color));
}

void DiagramEditor::draw_network() {
  for (const Stroke& stroke : network)
    draw(stroke.tool, stroke.from, stroke.to);
  const Tool cpu = open_properties(cpu_head);
  edit(cpu, 0, 8, "2");
  run_by_double_press(cpu, 1);  // from FIFO to the next word
  edit(cpu, 4, 5, "cpu");
  apply(cpu);
  const Tool disk = open_properties(disk_head);
  edit(disk, 4, 5, "disk");
  edit(disk, 5, 13, "20");
  apply(disk);
  const Tool frame = open_properties(frame_corner);
  edit(frame, 4, 5, "web server");
  apply(frame);
  colour({(way_back_from.x + way_back_to.x) / 2, way_back_from.y}, "4");
  choose(PaletteLine::leave);
}

}  // namespace torve::desktop
