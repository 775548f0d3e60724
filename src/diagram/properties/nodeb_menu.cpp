// Nodeb and nodec: attributes that a site names itself.

#include <array>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <string>

#include "base/errors.hpp"
#include "base/files.hpp"
#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"
#include "dialogs/text_lines.hpp"

namespace torve {

namespace {

constexpr const char* names_file = "nodeattrs.dat";
constexpr std::size_t most_bytes = 1 << 16;
constexpr int longest_name_line = 100;  // characters of a line of the file that count
constexpr int longest_name = 18;        // a blank and a field come behind it on a line of 49

using Labels = std::array<std::string, attribute_count + 1>;

// Their texts are written when the menu is made.
consteval std::array<PropertyLine, attribute_count + 1> lines_with_numbers() {
  std::array<PropertyLine, attribute_count + 1> lines = {};
  for (std::size_t i = 0; i < lines.size(); ++i)
    lines[i].fields[0] = {{.number = static_cast<int>(i)}, nodeb_properties[i]};
  return lines;
}
constexpr auto attribute_lines = lines_with_numbers();

Labels default_labels() {
  Labels labels = {"Name "};
  for (std::size_t i = 1; i < labels.size(); ++i)
    labels.at(i) = "Attr" + std::to_string(i) + " ";
  return labels;
}

// The first lines of the file. Ten names take less than the room there is: a file that is larger,
// or has no lines, is not read to its end.
std::istringstream first_lines(std::FILE* file) {
  std::string text(most_bytes, '\0');
  text.resize(std::fread(text.data(), 1, text.size(), file));
  return std::istringstream(text);
}

std::string name_in(std::string line) {
  replace_strange_characters(line.data());
  line.resize(line.find('\0') != std::string::npos ? line.find('\0') : line.size());
  const std::size_t first = line.find_first_not_of(" \t\r");
  if (first == std::string::npos) return {};
  line = line.substr(first, longest_name);
  return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}

// What the figure's numbers are called, for whoever reads the diagram without this site's file.
void keep_names(Vobj& figure, const Labels& labels) {
  const Labels defaults = default_labels();
  figure.attributes.clear();
  if (labels == defaults) return;
  figure.attributes.resize(attribute_count);
  for (std::size_t i = 1; i < labels.size(); ++i) {
    const std::string& label = labels.at(i);
    if (label != defaults.at(i)) figure.attributes[i - 1] = label.substr(0, label.size() - 1);
  }
}

Labels labels_of_site(Vobj& figure) {
  Labels labels = default_labels();
  const FilePtr file = open_data_file(names_file, DataKind::include, "r");
  if (file == nullptr) {
    cannot_find_file(names_file);
    return labels;
  }
  std::istringstream lines = first_lines(file.get());
  std::string line;
  for (std::size_t i = 1; i < labels.size() && std::getline(lines, line); ++i)
    labels.at(i) = name_in(line.substr(0, longest_name_line)) + " ";
  keep_names(figure, labels);
  return labels;
}

constexpr PropertyMenu nodeb_menu = {
    .lines = attribute_lines,
    .action = nodeb_menu_actions,
};

}  // namespace

int fill_nodebmenu(Vobj* figure, int id, int x, int y) {
  if (figure == nullptr) return 1;
  const Labels labels = labels_of_site(*figure);
  std::array<const char*, attribute_count + 1> lines;
  for (std::size_t i = 0; i < lines.size(); ++i)
    lines.at(i) = labels.at(i).c_str();
  return fill(nodeb_menu, figure, id, x, y, 0, lines);
}

int nodeb_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_property_menu(nodeb_menu, index, line_flags, items);
}

}  // namespace torve
