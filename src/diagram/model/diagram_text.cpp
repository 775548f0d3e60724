#include "diagram/model/diagram_text.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>

namespace torve {

namespace {

constexpr std::string_view first_line = "torve-diagram 1";
constexpr int highest_coordinate = 32767;
constexpr std::uint32_t highest_colour = 0xFFFFFF;

struct IntegerField {
  const char* name;
  int& (*of)(Vobj&);
  int limit = std::numeric_limits<int>::max();  // of its magnitude
};

constexpr IntegerField integer_fields[] = {
    {"x1", [](Vobj& f) -> int& { return f.x1; }, highest_coordinate},
    {"y1", [](Vobj& f) -> int& { return f.y1; }, highest_coordinate},
    {"x2", [](Vobj& f) -> int& { return f.x2; }, highest_coordinate},
    {"y2", [](Vobj& f) -> int& { return f.y2; }, highest_coordinate},
    {"spare1", [](Vobj& f) -> int& { return f.spare[0]; }},
    {"spare2", [](Vobj& f) -> int& { return f.spare[1]; }},
    {"spare3", [](Vobj& f) -> int& { return f.spare[2]; }},
    {"spare4", [](Vobj& f) -> int& { return f.spare[3]; }},
    {"servers", [](Vobj& f) -> int& { return f.servers; }},
    {"exit_filter", [](Vobj& f) -> int& { return f.exit_filter; }},
    {"ps_mode", [](Vobj& f) -> int& { return f.ps_mode; }},
    {"selection_rule", [](Vobj& f) -> int& { return f.selection_rule; }},
    {"int1", [](Vobj& f) -> int& { return f.integer[0]; }},
    {"int2", [](Vobj& f) -> int& { return f.integer[1]; }},
};
constexpr std::size_t needed_fields = 4;  // the first ones: the points

constexpr const char* value_names[] = {"value1", "value2", "value3", "value4"};

// --- writing ------------------------------------------------------------------------------------

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

void append_field(std::string& line, const char* name, const std::string& value) {
  line.append(" ").append(name).append("=").append(value);
}

std::string line_of(Vobj figure, int label) {
  std::string line = row_of(figure.kind).word;
  std::size_t field = 0;
  for (; field < needed_fields; ++field)
    append_field(line, integer_fields[field].name, decimal(integer_fields[field].of(figure)));
  append_field(line, "colour", hexadecimal(figure.colour));
  for (; field < std::size(integer_fields); ++field)
    append_field(line, integer_fields[field].name, decimal(integer_fields[field].of(figure)));
  for (std::size_t i = 0; i < std::size(value_names); ++i)
    append_field(line, value_names[i], decimal(figure.value[i]));
  append_field(line, "label", decimal(label));
  append_field(line, "name", quoted(figure.name));
  append_field(line, "text", quoted(figure.text));
  return line + '\n';
}

// The place in the diagram, from 1, of the figure with a serial number; 0 for none.
int place_in(const KeptDiagram& diagram, int serial) {
  for (std::size_t i = 0; i < diagram.size() && serial != 0; ++i) {
    if (diagram[i].record.serial == serial) return static_cast<int>(i) + 1;
  }
  return 0;
}

// --- reading ------------------------------------------------------------------------------------

// What is left of a line.
class LineReader {
 public:
  explicit LineReader(std::string_view line) : rest_(line) {}

  void skip_blanks() {
    const std::size_t start = rest_.find_first_not_of(" \t");
    rest_.remove_prefix(start == std::string_view::npos ? rest_.size() : start);
  }
  [[nodiscard]] bool at_end() const { return rest_.empty(); }

  std::string_view take_until(const char* delimiters) {
    const std::string_view word = rest_.substr(0, rest_.find_first_of(delimiters));
    rest_.remove_prefix(word.size());
    return word;
  }
  bool take(char wanted) {
    if (rest_.empty() || rest_.front() != wanted) return false;
    rest_.remove_prefix(1);
    return true;
  }

  template <typename Number, typename... Format>
  bool take_number(Number& number, Format... format) {
    const auto [end, error] =
        std::from_chars(rest_.data(), rest_.data() + rest_.size(), number, format...);
    if (error != std::errc{}) return false;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return true;
  }

  // A quoted text of at most label_text_length bytes, none of them zero.
  bool take_text(char (&out)[vobj_name_size]) {
    if (!take('"')) return false;
    std::size_t length = 0;
    while (!take('"')) {
      const int code = take_character();
      if (code <= 0 || length == label_text_length) return false;
      out[length++] = static_cast<char>(code);
    }
    out[length] = 0;
    return true;
  }

 private:
  // The next byte of a text, -1 for none.
  int take_character() {
    if (rest_.empty()) return -1;
    const auto code = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    if (code != '\\') return code < ' ' ? -1 : code;
    if (take('x')) return take_hex_byte();
    if (rest_.empty() || (rest_.front() != '"' && rest_.front() != '\\')) return -1;
    const char escaped = rest_.front();
    rest_.remove_prefix(1);
    return escaped;
  }

  int take_hex_byte() {
    constexpr std::size_t digits = 2;
    unsigned code = 0;
    if (rest_.size() < digits) return -1;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + digits, code, 16);
    if (error != std::errc{} || end != rest_.data() + digits) return -1;
    rest_.remove_prefix(digits);
    return static_cast<int>(code);
  }

  std::string_view rest_;
};

bool read_kind(std::string_view word, FigureKind* kind) {
  const auto kinds = figure_kinds();
  const auto row = std::find_if(kinds.begin(), kinds.end(),
                                [word](const FigureKindRow& each) { return each.word == word; });
  if (row == kinds.end()) return false;
  *kind = row->kind;
  return true;
}

bool read_integer(LineReader& line, int limit, int* value) {
  return line.take_number(*value) && *value <= limit && *value >= -1 - limit;
}

bool read_colour(LineReader& line, std::uint32_t* colour) {
  return line.take('#') && line.take_number(*colour, 16) && *colour <= highest_colour;
}

// The value of the field `name`. For `label` that is the place of its line.
bool read_value(LineReader& line, std::string_view name, KeptFigure& figure) {
  Vobj& record = figure.record;
  for (const IntegerField& field : integer_fields) {
    if (name == field.name) return read_integer(line, field.limit, &field.of(record));
  }
  for (std::size_t i = 0; i < std::size(value_names); ++i) {
    if (name != value_names[i]) continue;
    return line.take_number(record.value[i]) && std::isfinite(record.value[i]);
  }
  if (name == "colour") return read_colour(line, &record.colour);
  if (name == "label") return read_integer(line, static_cast<int>(most_figures), &figure.label);
  if (name == "name") return line.take_text(record.name);
  if (name == "text") return line.take_text(record.text);
  return false;
}

bool has_all_points(const std::vector<std::string_view>& names) {
  return std::all_of(integer_fields, integer_fields + needed_fields,
                     [&](const IntegerField& field) {
                       return std::count(names.begin(), names.end(), field.name) == 1;
                     });
}

bool read_line(std::string_view text, KeptFigure& figure) {
  LineReader line(text);
  if (!read_kind(line.take_until(" \t"), &figure.record.kind)) return false;
  std::vector<std::string_view> names;
  for (line.skip_blanks(); !line.at_end(); line.skip_blanks()) {
    const std::string_view name = line.take_until("= \t");
    if (std::count(names.begin(), names.end(), name) != 0) return false;
    if (!line.take('=') || !read_value(line, name, figure)) return false;
    names.push_back(name);
  }
  figure.record.phase = phase_on_canvas | phase_draw;
  return has_all_points(names);
}

// From places to serial numbers; the first line whose label is not a label of its own, or 0.
int resolve_labels(KeptDiagram& diagram) {
  std::vector<bool> taken(diagram.size(), false);
  for (KeptFigure& figure : diagram)
    figure.record.serial = new_serial();
  for (std::size_t i = 0; i < diagram.size(); ++i) {
    KeptFigure& figure = diagram[i];
    if (figure.label == 0) continue;
    const auto place = static_cast<std::size_t>(figure.label) - 1;
    const bool fits = figure.label > 0 && place < diagram.size() && !taken[place] &&
                      diagram[place].record.kind == FigureKind::label &&
                      figure.record.kind != FigureKind::label;
    if (!fits) return static_cast<int>(i) + 1;
    taken[place] = true;
    figure.label = diagram[place].record.serial;
  }
  return 0;
}

std::string_view next_line(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

}  // namespace

std::string diagram_to_text(const KeptDiagram& diagram) {
  std::string text(first_line);
  text += '\n';
  for (const KeptFigure& figure : diagram)
    text += line_of(figure.record, place_in(diagram, figure.label));
  return text;
}

std::optional<KeptDiagram> diagram_from_text(std::string_view text, int* bad_line) {
  *bad_line = 1;
  if (next_line(text) != first_line) return std::nullopt;
  KeptDiagram diagram;
  while (!text.empty()) {
    ++*bad_line;
    KeptFigure& figure = diagram.emplace_back();
    if (diagram.size() > most_figures || !read_line(next_line(text), figure)) return std::nullopt;
  }
  const int unresolved = resolve_labels(diagram);
  *bad_line = unresolved + 1;
  if (unresolved != 0) return std::nullopt;
  return diagram;
}

}  // namespace torve
