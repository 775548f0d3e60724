#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <unordered_map>

#include "diagram/model/arcs.hpp"
#include "diagram/model/diagram_text.hpp"
#include "diagram/model/figure_properties.hpp"
#include "diagram/model/line_reader.hpp"

namespace torve {

namespace {

constexpr std::string_view first_lines[] = {"torve-diagram 1", "torve-diagram 2"};
static_assert(std::size(first_lines) == diagram_version);
constexpr std::uint32_t highest_colour = 0xFFFFFF;
constexpr int farthest_hold = 2 * highest_coordinate;

bool is_in(int value, int lowest, int highest) {
  return lowest <= value && value <= highest;
}

bool read_kind(std::string_view word, FigureKind* kind) {
  const auto kinds = figure_kinds();
  const auto row = std::find_if(kinds.begin(), kinds.end(),
                                [word](const FigureKindRow& each) { return each.word == word; });
  if (row == kinds.end()) return false;
  *kind = row->kind;
  return true;
}

bool read_integer(LineReader& line, int lowest, int highest, int* value) {
  return line.take_number(*value) && is_in(*value, lowest, highest);
}

bool read_colour(LineReader& line, std::uint32_t* colour) {
  return line.take('#') && line.take_number(*colour, 16) && *colour <= highest_colour;
}

// x2-5: what it is counted from, and how far from there.
bool read_offset(LineReader& line, char axis, int* of, int* distance) {
  if (!line.take(axis) || !line.take_number(*of) || !is_in(*of, 1, 2)) return false;
  if (line.take('+') == line.begins_with('-')) return false;
  return read_integer(line, -farthest_hold, farthest_hold, distance);
}

// `key` without the end's own word: nothing, _x or _y.
bool read_hold(LineReader& line, std::string_view key, Hold* hold) {
  if (key.empty()) return read_integer(line, 1, highest_identity, &hold->figure);
  return key == "_x" ? read_offset(line, 'x', &hold->x_of, &hold->dx)
                     : read_offset(line, 'y', &hold->y_of, &hold->dy);
}

bool read_coordinate(LineReader& line, int* value) {
  return read_integer(line, -highest_coordinate - 1, highest_coordinate, value);
}

bool read_bends(LineReader& line, std::vector<FigureAnchor>* bends) {
  std::string text;
  if (!line.take_text(text)) return false;
  LineReader points(text);
  for (points.skip_blanks(); !points.at_end(); points.skip_blanks()) {
    FigureAnchor& point = bends->emplace_back();
    if (bends->size() > most_bends || !read_coordinate(points, &point.x) || !points.take(',') ||
        !read_coordinate(points, &point.y)) {
      return false;
    }
  }
  return true;
}

bool read_probability(LineReader& line, double* probability) {
  return line.take_number(*probability) && *probability >= 0 && *probability <= 1;
}

bool read_attribute(LineReader& line, std::size_t number, FigureRecord& record) {
  char name[vobj_name_size];
  if (!line.take_text(name)) return false;
  record.attributes.resize(attribute_count);
  record.attributes[number] = name;
  return true;
}

enum class Reading { done, bad, unknown_key };

Reading result(bool read) {
  return read ? Reading::done : Reading::bad;
}

// The fields that every figure has. Of `label` the value is the place of its line.
Reading read_common(LineReader& line, std::string_view key, KeptFigure& figure) {
  FigureRecord& record = figure.record;
  for (const IntegerKey& field : integer_keys()) {
    if (key == field.key)
      return result(read_integer(line, -1 - field.limit, field.limit, &field.of(record)));
  }
  for (std::size_t i = 0; i < std::size(value_keys); ++i) {
    double& value = record.value[i];
    if (key == value_keys[i]) return result(line.take_number(value) && std::isfinite(value));
  }
  if (key == "colour") return result(read_colour(line, &record.colour));
  if (key == "label")
    return result(read_integer(line, 0, static_cast<int>(most_figures), &figure.label));
  if (key == "name") return result(line.take_text(record.name));
  if (key == "text") return result(line.take_text(record.text));
  if (key == "id") return result(read_integer(line, 1, highest_identity, &record.identity));
  return Reading::unknown_key;
}

// Those of some kinds.
Reading read_special(LineReader& line, std::string_view key, FigureRecord& record) {
  const bool is_arc = record.kind == FigureKind::arc;
  const auto is_hold = [key](std::string_view end) {
    return key.starts_with(end) &&
           (key == end || key.substr(end.size()) == "_x" || key.substr(end.size()) == "_y");
  };
  if ((is_arc || record.kind == FigureKind::label) && is_hold("from"))
    return result(read_hold(line, key.substr(4), &record.from));
  if (is_arc && is_hold("to")) return result(read_hold(line, key.substr(2), &record.to));
  if (is_arc && key == "bends") return result(read_bends(line, &record.bends));
  if (is_arc && key == "probability") return result(read_probability(line, &record.probability));
  if (is_arc && key == "class") return result(line.take_text(record.job_class));
  if (row_of(record.kind).menu != FigureMenu::nodeb) return Reading::unknown_key;
  for (std::size_t i = 0; i < attribute_count; ++i) {
    if (key == "attr" + std::to_string(i + 1)) return result(read_attribute(line, i, record));
  }
  return Reading::unknown_key;
}

bool may_be_key(std::string_view key) {
  const auto is_letter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
  };
  return !key.empty() && is_letter(key.front()) &&
         std::all_of(key.begin(), key.end(), [is_letter](char c) {
           return is_letter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
         });
}

bool keep_unknown(LineReader& line, std::string_view key, std::string& kept) {
  const std::string_view value = line.take_value();
  if (!may_be_key(key) || value.empty()) return false;
  kept.append(" ").append(key).append("=").append(value);
  return true;
}

bool read_field(LineReader& line, std::string_view key, bool separated, KeptFigure& figure) {
  Reading reading = read_common(line, key, figure);
  if (reading == Reading::unknown_key) reading = read_special(line, key, figure.record);
  if (reading != Reading::unknown_key) return reading == Reading::done;
  return separated && keep_unknown(line, key, figure.record.other_keys);
}

bool has_all_points(const std::vector<std::string_view>& sorted_names) {
  const auto keys = integer_keys().first(point_keys);
  return std::all_of(keys.begin(), keys.end(), [&](const IntegerKey& point) {
    return std::binary_search(sorted_names.begin(), sorted_names.end(),
                              std::string_view(point.key));
  });
}

bool has_only_once(const std::vector<std::string_view>& sorted_names) {
  return std::adjacent_find(sorted_names.begin(), sorted_names.end()) == sorted_names.end();
}

bool read_figure(LineReader line, KeptFigure& figure) {
  if (!read_kind(line.take_until(" \t"), &figure.record.kind)) return false;
  std::vector<std::string_view> names;
  for (;;) {
    const bool separated = line.skip_blanks();
    if (line.at_end() || (separated && line.begins_with('#'))) break;
    const std::string_view name = line.take_until("= \t");
    if (!line.take('=') || !read_field(line, name, separated, figure)) return false;
    names.push_back(name);
  }
  figure.record.phase = phase_on_canvas | phase_draw;
  std::sort(names.begin(), names.end());
  return has_all_points(names) && has_only_once(names);
}

// --- what figures say about each other ----------------------------------------------------------

class Resolver {
 public:
  explicit Resolver(KeptDiagram& diagram) : diagram_(diagram), is_label_(diagram.size(), false) {}

  /// Whether the figures' identities are theirs alone; those that have none get one. The first that
  /// does not is `*bad`.
  bool name_figures(std::size_t* bad) {
    for (*bad = 0; *bad < diagram_.size(); ++*bad) {
      const int identity = diagram_[*bad].record.identity;
      if (identity != 0 && !by_identity_.emplace(identity, *bad).second) return false;
    }
    int next = 1;
    for (KeptFigure& figure : diagram_) {
      figure.record.serial = new_serial();
      if (figure.record.identity != 0) continue;
      while (by_identity_.contains(next))
        ++next;
      figure.record.identity = next++;
    }
    return true;
  }

  /// From places and identities to serial numbers; whether there are such figures, and fit.
  bool resolve(KeptFigure& figure) {
    FigureRecord& record = figure.record;
    if (!resolve_label(figure) || !resolve_hold(record.from) || !resolve_hold(record.to))
      return false;
    follow_holds(record, [this](int serial) { return with_serial(serial); });
    return true;
  }

 private:
  bool resolve_label(KeptFigure& figure) {
    if (figure.label == 0) return true;
    const auto place = static_cast<std::size_t>(figure.label) - 1;
    const bool fits = place < diagram_.size() && !is_label_[place] &&
                      diagram_[place].record.kind == FigureKind::label &&
                      figure.record.kind != FigureKind::label;
    if (!fits) return false;
    is_label_[place] = true;
    figure.label = diagram_[place].record.serial;
    return true;
  }

  bool resolve_hold(Hold& hold) {
    if (hold.figure == 0) {
      hold = {};
      return true;
    }
    const auto found = by_identity_.find(hold.figure);
    if (found == by_identity_.end()) return false;
    const FigureRecord& record = diagram_[found->second].record;
    hold.figure = record.serial;
    return row_of(record.kind).holds;
  }

  // Serial numbers were given in the order of the figures.
  [[nodiscard]] const FigureRecord* with_serial(int serial) const {
    return &diagram_[static_cast<std::size_t>(serial - diagram_.front().record.serial)].record;
  }

  KeptDiagram& diagram_;
  std::vector<bool> is_label_;
  std::unordered_map<int, std::size_t> by_identity_;  // only those that the file names
};

std::string_view next_line(std::string_view& text) {
  std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool says_nothing(std::string_view line) {
  LineReader reader(line);
  reader.skip_blanks();
  return reader.at_end() || reader.begins_with('#');
}

}  // namespace

std::optional<KeptDiagram> diagram_from_text(std::string_view text, int* bad_line) {
  *bad_line = 1;
  if (std::ranges::find(first_lines, next_line(text)) == std::end(first_lines)) return std::nullopt;
  KeptDiagram diagram;
  std::vector<int> lines;  // of the figures
  for (int number = 2; !text.empty(); ++number) {
    const std::string_view line = next_line(text);
    if (says_nothing(line)) continue;
    *bad_line = number;
    KeptFigure& figure = diagram.emplace_back();
    if (diagram.size() > most_figures || !read_figure(LineReader(line), figure))
      return std::nullopt;
    lines.push_back(number);
  }
  Resolver resolver(diagram);
  std::size_t bad = 0;
  bool fits = resolver.name_figures(&bad);
  for (std::size_t i = 0; fits && i < diagram.size(); ++i) {
    bad = i;
    fits = resolver.resolve(diagram[i]);
  }
  if (fits) return diagram;
  *bad_line = lines[bad];
  return std::nullopt;
}

}  // namespace torve
