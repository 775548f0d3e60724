#include "desktop/tools.hpp"

#include <fstream>
#include <iterator>
#include <sstream>

namespace torve::desktop {

namespace {

constexpr int text_inset = 16;  // of a menu's text, from its upper left corner
constexpr int column_width = 8;
constexpr int row_height = 11;
constexpr int box = 5;               // from a menu's corner to the middle of a box
constexpr int drag = 12;             // pixels that make a press a drag
constexpr int longest_default = 12;  // characters
constexpr unsigned long backspace_key = 0xFF08, return_key = 0xFF0D;

int row_of(const Tool& tool, int line) {
  return tool.y + text_inset + row_height * line;
}

int column_of(const Tool& tool, int column) {
  return tool.x + text_inset + column_width * column;
}

}  // namespace

void Workbench::open(const Tool& tool) {
  const Area icon = icon_area(tool.icon);
  click(icon.x + 3, icon.y + icon.height / 2);
  settle();
}

void Workbench::run(const Tool& tool, int line) {
  const int x = column_of(tool, 1);
  const int y = row_of(tool, line) + row_height / 2;
  press(x, y);
  settle();
  server().move_pointer(window(), x + drag, y);
  settle();
  release();
  settle();
}

void Workbench::run_by_double_press(const Tool& tool, int line) {
  for (int i = 0; i < 2; ++i) {
    click(column_of(tool, 1), row_of(tool, line) + row_height / 2);
    settle();
  }
}

void Workbench::edit(const Tool& tool, int line, int column, const std::string& text) {
  click(column_of(tool, column) + column_width / 2, row_of(tool, line) + row_height / 2);
  settle();
  for (int i = 0; i < longest_default; ++i)
    key(backspace_key);
  type(text);
  key(return_key);
}

void Workbench::close(const Tool& tool) {
  click(tool.x + tool.width - box, tool.y + box);
  settle();
}

Tool Workbench::move(const Tool& tool, int to_x, int to_y) {
  press(tool.x + box, tool.y + box, 3);
  settle();
  server().move_pointer(window(), to_x + box, to_y + box);
  settle();
  release(3);
  settle();
  return {tool.icon, to_x, to_y, tool.width};
}

bool Workbench::shows(const Tool& tool, int line, int column, const std::string& text) {
  return shows_text(screenshot(), 7, column_of(tool, column), row_of(tool, line), text, black);
}

bool Workbench::pane_shows(int pane, const std::string& title) {
  return shows_text(screenshot(), 6, 96, pane_area(pane).y + 15, title, black);
}

void Workbench::write_signal(const std::string& name, const std::vector<double>& values) {
  std::ofstream out(folder() / name);
  for (std::size_t i = 0; i < values.size(); ++i)
    out << i << ' ' << values[i] << '\n';
}

std::vector<double> Workbench::read_signal(const std::string& name) const {
  std::istringstream in(read_file(name));
  std::vector<double> values;
  std::string line;
  while (std::getline(in, line)) {
    if (!line.starts_with("size=")) values.push_back(std::stod(line.substr(line.find(' '))));
  }
  return values;
}

std::string Workbench::read_file(const std::string& name) const {
  std::ifstream in(folder() / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace torve::desktop
