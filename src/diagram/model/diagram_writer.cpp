#include <array>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <limits>
#include <unordered_map>

#include "diagram/model/diagram_text.hpp"
#include "diagram/model/figure_properties.hpp"

namespace torve {

namespace {

constexpr int any_number = std::numeric_limits<int>::max();

constexpr IntegerKey keys[] = {
    {"x1", integer_of<&FigureRecord::x1>, highest_coordinate},
    {"y1", integer_of<&FigureRecord::y1>, highest_coordinate},
    {"x2", integer_of<&FigureRecord::x2>, highest_coordinate},
    {"y2", integer_of<&FigureRecord::y2>, highest_coordinate},
    {"spare1", [](FigureRecord& f) -> int& { return f.spare[0]; }, any_number},
    {"spare2", [](FigureRecord& f) -> int& { return f.spare[1]; }, any_number},
    {"spare3", [](FigureRecord& f) -> int& { return f.spare[2]; }, any_number},
    {"spare4", [](FigureRecord& f) -> int& { return f.spare[3]; }, any_number},
    {"servers", integer_of<&FigureRecord::servers>, any_number},
    {"exit_filter", integer_of<&FigureRecord::exit_filter>, any_number},
    {"ps_mode", integer_of<&FigureRecord::ps_mode>, any_number},
    {"selection_rule", integer_of<&FigureRecord::selection_rule>, any_number},
    {"int1", int_of<1>, any_number},
    {"int2", int_of<2>, any_number},
};

template <typename Number>
std::string decimal(Number value) {
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return {digits.data(), end};
}

std::string quoted(const char* text) {
  std::string out = "\"";
  for (; *text != 0; ++text) {
    const auto code = static_cast<unsigned char>(*text);
    if (*text == '"' || *text == '\\') {
      out += {'\\', *text};
    } else if (code < ' ' || code > '~') {
      std::array<char, 8> escape;
      std::snprintf(escape.data(), escape.size(), "\\x%02x", unsigned{code});
      out += escape.data();
    } else {
      out += *text;
    }
  }
  return out + '"';
}

std::string hexadecimal(std::uint32_t colour) {
  std::array<char, 16> digits;
  std::snprintf(digits.data(), digits.size(), "#%06x", colour);
  return digits.data();
}

void append_field(std::string& line, const std::string& key, const std::string& value) {
  line.append(" ").append(key).append("=").append(value);
}

// What a figure refers to others by.
struct Names {
  std::unordered_map<int, int> places;      // in the diagram, from 1, by serial number
  std::unordered_map<int, int> identities;  // by serial number
};

Names names_in(const KeptDiagram& diagram) {
  Names names;
  for (const KeptFigure& figure : diagram) {
    names.places.emplace(figure.record.serial, static_cast<int>(names.places.size()) + 1);
    names.identities.emplace(figure.record.serial, figure.record.identity);
  }
  return names;
}

int found(const std::unordered_map<int, int>& numbers, int serial) {
  const auto number = numbers.find(serial);
  return number != numbers.end() ? number->second : 0;
}

std::string offset(char axis, int of, int distance) {
  std::string text = {axis, static_cast<char>('0' + of)};
  if (distance >= 0) text += '+';
  return text + decimal(distance);
}

void append_hold(std::string& line, const std::string& key, const Hold& hold, const Names& names) {
  const int identity = found(names.identities, hold.figure);
  if (identity == 0) return;
  append_field(line, key, decimal(identity));
  append_field(line, key + "_x", offset('x', hold.x_of, hold.dx));
  append_field(line, key + "_y", offset('y', hold.y_of, hold.dy));
}

std::string bends_text(const std::vector<FigureAnchor>& bends) {
  std::string text;
  for (const auto& [x, y] : bends) {
    if (!text.empty()) text += ' ';
    text += decimal(x) + ',' + decimal(y);
  }
  return quoted(text.c_str());
}

// What was added to the fields that every figure has.
void append_new_fields(std::string& line, const FigureRecord& figure, const Names& names) {
  append_field(line, "id", decimal(figure.identity));
  append_hold(line, "from", figure.from, names);
  append_hold(line, "to", figure.to, names);
  if (!figure.bends.empty()) append_field(line, "bends", bends_text(figure.bends));
  if (figure.probability != no_probability)
    append_field(line, "probability", decimal(figure.probability));
  if (figure.job_class[0] != 0) append_field(line, "class", quoted(figure.job_class));
  for (std::size_t i = 0; i < figure.attributes.size(); ++i) {
    if (figure.attributes[i].empty()) continue;
    append_field(line, "attr" + decimal(i + 1), quoted(figure.attributes[i].c_str()));
  }
  line += figure.other_keys;
}

std::string line_of(FigureRecord figure, int label, const Names& names) {
  settle_codes(figure);
  std::string line = row_of(figure.kind).word;
  std::size_t field = 0;
  for (; field < point_keys; ++field)
    append_field(line, keys[field].key, decimal(keys[field].of(figure)));
  append_field(line, "colour", hexadecimal(figure.colour));
  for (; field < std::size(keys); ++field)
    append_field(line, keys[field].key, decimal(keys[field].of(figure)));
  for (std::size_t i = 0; i < std::size(value_keys); ++i)
    append_field(line, value_keys[i], decimal(figure.value[i]));
  append_field(line, "label", decimal(found(names.places, label)));
  append_field(line, "name", quoted(figure.name));
  append_field(line, "text", quoted(figure.text));
  append_new_fields(line, figure, names);
  return line + '\n';
}

}  // namespace

std::span<const IntegerKey> integer_keys() {
  return keys;
}

std::string diagram_to_text(const KeptDiagram& diagram) {
  const Names names = names_in(diagram);
  std::string text = "torve-diagram " + decimal(diagram_version) + '\n';
  for (const KeptFigure& figure : diagram)
    text += line_of(figure.record, figure.label, names);
  return text;
}

}  // namespace torve
