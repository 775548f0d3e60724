#include "diagram/model/network_text.hpp"

#include <array>
#include <charconv>

#include "diagram/model/figure_properties.hpp"
#include "diagram/model/label_letters.hpp"

namespace torve {

namespace {

std::string shortest(double value) {
  std::array<char, 32> digits;
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr};
}

std::string quoted_name(const FigureRecord& figure) {
  std::string text = " \"";
  return text + utf8_of_name(figure.name) + '"';
}

std::string end_of_arc(const KeptDiagram& diagram, std::size_t figure) {
  return figure == nowhere ? "-" : std::to_string(diagram[figure].record.identity);
}

class Lines {
 public:
  explicit Lines(const KeptDiagram& diagram) : diagram_(diagram) {}

  void add(const char* what, std::size_t figure, const std::string& rest) {
    text_ += what;
    if (figure != nowhere) {
      const FigureRecord& record = diagram_[figure].record;
      text_ += ' ' + std::to_string(record.identity) + quoted_name(record);
    }
    text_ += rest + '\n';
  }

  void add_arc(const NetworkArc& arc) {
    std::string rest = ": " + end_of_arc(diagram_, arc.from);
    rest += " to " + end_of_arc(diagram_, arc.to);
    for (const auto& [job_class, share] : arc.shares) {
      rest += ", " + shortest(share);
      if (!job_class.empty()) rest += " of " + utf8_of_name(job_class);
    }
    add("arc", arc.figure, rest);
  }

  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  const KeptDiagram& diagram_;
  std::string text_;
};

}  // namespace

std::string network_to_text(const KeptDiagram& diagram, const Network& network,
                            const std::vector<Finding>& findings) {
  Lines lines(diagram);
  const auto title_of = [&diagram](std::size_t figure) {
    return std::string(", ") + row_of(diagram[figure].record.kind).title;
  };
  for (const std::size_t station : network.stations)
    lines.add("station", station, title_of(station));
  for (const std::size_t source : network.sources)
    lines.add("source", source, title_of(source));
  for (const NetworkArc& arc : network.arcs)
    lines.add_arc(arc);
  for (const NetworkArc& arc : network.arcs) {
    if (arc.to == nowhere) lines.add("sink", arc.figure, "");
  }
  for (const Finding& finding : findings)
    lines.add("finding", finding.figure, ": " + finding.text);
  return lines.text();
}

}  // namespace torve
