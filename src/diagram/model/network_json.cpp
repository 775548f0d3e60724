#include <array>
#include <cstdio>
#include <unordered_map>

#include "diagram/model/diagram_text.hpp"
#include "diagram/model/figure_properties.hpp"
#include "diagram/model/json_writer.hpp"
#include "diagram/model/label_letters.hpp"
#include "diagram/model/line_reader.hpp"
#include "diagram/model/network_text.hpp"

namespace torve {

namespace {

class DiagramJson {
 public:
  explicit DiagramJson(const KeptDiagram& diagram) : diagram_(diagram) {
    for (const KeptFigure& figure : diagram)
      identities_.emplace(figure.record.serial, figure.record.identity);
  }

  std::string write(const Network& network, const std::vector<Finding>& findings) {
    json_.begin_object();
    json_.text("format", "torve-diagram");
    json_.integer("version", diagram_version);
    json_.begin_array("figures");
    for (const KeptFigure& figure : diagram_)
      write_figure(figure);
    json_.end_array();
    write_network(network);
    json_.begin_array("findings");
    for (const Finding& finding : findings) {
      json_.begin_object();
      put_figure("figure", finding.figure);
      json_.text("name", finding.figure == nowhere ? "" : name_of(finding.figure));
      json_.text("text", utf8_of_name(finding.text));
      json_.end_object();
    }
    json_.end_array();
    json_.end_object();
    return json_.take();
  }

 private:
  [[nodiscard]] std::string name_of(std::size_t figure) const {
    return utf8_of_name(diagram_[figure].record.name);
  }

  // --- references, null for none ---

  void put_figure(std::string_view key, std::size_t figure) {
    if (figure == nowhere) return json_.null(key);
    json_.integer(key, diagram_[figure].record.identity);
  }

  void put_serial(std::string_view key, int serial) {
    const auto found = identities_.find(serial);
    if (found == identities_.end()) return json_.null(key);
    json_.integer(key, found->second);
  }

  void put_hold(std::string_view key, const Hold& hold) {
    if (!identities_.contains(hold.figure)) return json_.null(key);
    json_.begin_object(key);
    put_serial("figure", hold.figure);
    json_.integer("x_of", hold.x_of);
    json_.integer("dx", hold.dx);
    json_.integer("y_of", hold.y_of);
    json_.integer("dy", hold.dy);
    json_.end_object();
  }

  // --- figures ---

  void write_figure(const KeptFigure& kept) {
    FigureRecord figure = kept.record;
    settle_codes(figure);
    json_.begin_object();
    json_.integer("id", figure.identity);
    json_.text("kind", row_of(figure.kind).word);
    for (const IntegerKey& field : integer_keys())
      json_.integer(field.key, field.of(figure));
    for (std::size_t i = 0; i < std::size(value_keys); ++i)
      json_.real(value_keys[i], figure.value[i]);
    std::array<char, 16> colour;
    std::snprintf(colour.data(), colour.size(), "#%06x", figure.colour);
    json_.text("colour", colour.data());
    put_serial("label", kept.label);
    json_.text("name", utf8_of_name(figure.name));
    json_.text("text", utf8_of_name(figure.text));
    put_hold("from", figure.from);
    put_hold("to", figure.to);
    write_way(figure);
    write_properties(figure);
    write_other_keys(figure);
    json_.end_object();
  }

  void write_way(const FigureRecord& figure) {
    json_.begin_array("bends");
    for (const auto& [x, y] : figure.bends) {
      json_.begin_array();
      json_.integer({}, x);
      json_.integer({}, y);
      json_.end_array();
    }
    json_.end_array();
    put_probability(figure);
    json_.text("class", utf8_of_name(figure.job_class));
  }

  void put_probability(const FigureRecord& figure) {
    if (figure.probability == no_probability) return json_.null("probability");
    json_.real("probability", figure.probability);
  }

  // What the menu shows: its lines with what they mean.
  void write_properties(FigureRecord& figure) {
    json_.begin_array("properties");
    std::size_t line = 0;
    for (const FigureProperty& property : properties_of(row_of(figure.kind).menu)) {
      json_.begin_object();
      json_.text("key", property.key);
      json_.text("line", utf8_of_name(line_of(figure, line++, property)));
      json_.text("unit", property.unit);
      write_value(figure, property);
      json_.end_object();
    }
    json_.end_array();
  }

  // A site may have named the numbers of a node b, which come behind its name.
  static std::string line_of(const FigureRecord& figure, std::size_t line,
                             const FigureProperty& property) {
    const bool is_named = row_of(figure.kind).menu == FigureMenu::nodeb && line > 0 &&
                          line <= figure.attributes.size() && !figure.attributes[line - 1].empty();
    return is_named ? figure.attributes[line - 1] : property.line;
  }

  void write_value(FigureRecord& figure, const FigureProperty& property) {
    if (property.text != nullptr) return json_.text("value", utf8_of_name(property.text(figure)));
    if (property.real != nullptr) {
      const double value = property.real(figure);
      return property.is_share && value == no_probability ? json_.null("value")
                                                          : json_.real("value", value);
    }
    const CodeAndNumber parts = split_code(property, property.integer(figure));
    json_.integer("value", parts.code);
    if (const char* word = word_for(property.words, parts.code)) json_.text("word", word);
    if (property.code_bits != 0) json_.integer("number", parts.number);
  }

  void write_other_keys(const FigureRecord& figure) {
    json_.begin_object("other");
    LineReader line(figure.other_keys);
    for (line.skip_blanks(); !line.at_end(); line.skip_blanks()) {
      const std::string_view key = line.take_until("=");
      line.take('=');
      std::string value;
      if (line.begins_with('"')) {
        line.take_text(value);
      } else {
        value = line.take_value();
      }
      json_.text(key, utf8_of_name(value));
    }
    json_.end_object();
  }

  // --- the network ---

  void write_network(const Network& network) {
    json_.begin_object("network");
    write_figures("stations", network.stations);
    write_figures("sources", network.sources);
    json_.begin_array("arcs");
    for (const NetworkArc& arc : network.arcs)
      write_arc(arc);
    json_.end_array();
    json_.begin_array("sinks");
    for (const NetworkArc& arc : network.arcs) {
      if (arc.to == nowhere) put_figure({}, arc.figure);
    }
    json_.end_array();
    json_.end_object();
  }

  void write_figures(std::string_view key, const std::vector<std::size_t>& figures) {
    json_.begin_array(key);
    for (const std::size_t figure : figures)
      put_figure({}, figure);
    json_.end_array();
  }

  void write_arc(const NetworkArc& arc) {
    const FigureRecord& record = diagram_[arc.figure].record;
    json_.begin_object();
    put_figure("figure", arc.figure);
    put_figure("from", arc.from);
    put_figure("to", arc.to);
    put_probability(record);
    json_.text("class", utf8_of_name(record.job_class));
    json_.begin_array("shares");
    for (const auto& [job_class, share] : arc.shares) {
      json_.begin_object();
      json_.text("class", utf8_of_name(job_class));
      json_.real("share", share);
      json_.end_object();
    }
    json_.end_array();
    json_.end_object();
  }

  const KeptDiagram& diagram_;
  std::unordered_map<int, int> identities_;  // by serial number
  JsonWriter json_;
};

}  // namespace

std::string network_to_json(const KeptDiagram& diagram, const Network& network,
                            const std::vector<Finding>& findings) {
  return DiagramJson(diagram).write(network, findings);
}

}  // namespace torve
