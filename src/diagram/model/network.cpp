#include "diagram/model/network.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <unordered_map>

#include "diagram/model/figure_properties.hpp"

namespace torve {

namespace {

using Arcs = std::vector<NetworkArc*>;
using Ways = std::map<std::size_t, Arcs>;  // by the figure that they leave

std::vector<NetworkArc> arcs_of(const KeptDiagram& diagram) {
  std::unordered_map<int, std::size_t> places;
  for (std::size_t i = 0; i < diagram.size(); ++i)
    places.emplace(diagram[i].record.serial, i);
  const auto place_of_figure = [&places](const Hold& hold) {
    const auto found = places.find(hold.figure);
    return found != places.end() ? found->second : nowhere;
  };
  std::vector<NetworkArc> arcs;
  for (std::size_t i = 0; i < diagram.size(); ++i) {
    const FigureRecord& figure = diagram[i].record;
    if (figure.kind != FigureKind::arc) continue;
    arcs.push_back({i, place_of_figure(figure.from), place_of_figure(figure.to), {}});
  }
  return arcs;
}

bool is_station(const FigureRecord& figure, bool has_arc) {
  return row_of(figure.kind).holds && figure.kind != FigureKind::tel &&
         (figure.kind != FigureKind::vbox || has_arc);
}

Ways ways_of(Network& network) {
  Ways ways;
  for (NetworkArc& arc : network.arcs) {
    if (arc.from != nowhere) ways[arc.from].push_back(&arc);
  }
  return ways;
}

const FigureRecord& record_of(const KeptDiagram& diagram, const NetworkArc& arc) {
  return diagram[arc.figure].record;
}

// Those that some of the arcs belong to; everybody, when none does.
std::set<std::string> classes_of(const KeptDiagram& diagram, const Arcs& arcs) {
  std::set<std::string> classes;
  for (const NetworkArc* arc : arcs) {
    const char* of_arc = record_of(diagram, *arc).job_class;
    if (*of_arc != 0) classes.insert(of_arc);
  }
  if (classes.empty()) classes.insert("");
  return classes;
}

bool is_open_to(const FigureRecord& arc, const std::string& job_class) {
  return arc.job_class[0] == 0 || arc.job_class == job_class;
}

void share_out(const KeptDiagram& diagram, const Arcs& arcs, const std::string& job_class) {
  double given = 0;
  int without = 0;
  for (const NetworkArc* arc : arcs) {
    const FigureRecord& record = record_of(diagram, *arc);
    if (!is_open_to(record, job_class)) continue;
    if (record.probability == no_probability) {
      ++without;
    } else {
      given += record.probability;
    }
  }
  const double left = without > 0 ? std::max(0.0, 1 - given) / without : 0;
  for (NetworkArc* arc : arcs) {
    const FigureRecord& record = record_of(diagram, *arc);
    if (!is_open_to(record, job_class)) continue;
    arc->shares[job_class] = record.probability == no_probability ? left : record.probability;
  }
}

// --- what is wrong ------------------------------------------------------------------------------

class Findings {
 public:
  Findings(const KeptDiagram& diagram, const Network& network)
      : diagram_(diagram), network_(network) {}

  std::vector<Finding> all() {
    if (network_.sources.empty()) add(nowhere, "no source: no telephone brings work in");
    look_for_names();
    for (const std::size_t station : network_.stations)
      look_at_servers(station);
    look_at_ways();
    std::stable_sort(found_.begin(), found_.end(), [](const Finding& one, const Finding& other) {
      return one.figure + 1 < other.figure + 1;  // nowhere is the first
    });
    return std::move(found_);
  }

 private:
  void add(std::size_t figure, const std::string& text) { found_.push_back({figure, text}); }

  void look_for_names() {
    std::map<std::string, std::size_t> owners;
    std::vector<std::size_t> named = network_.stations;
    named.insert(named.end(), network_.sources.begin(), network_.sources.end());
    for (const NetworkArc& arc : network_.arcs)
      named.push_back(arc.figure);
    std::sort(named.begin(), named.end());
    for (const std::size_t figure : named) {
      const FigureRecord& record = diagram_[figure].record;
      if (is_blank(record.name)) continue;
      const auto [owner, is_new] = owners.emplace(record.name, figure);
      if (is_new) continue;
      const int other = diagram_[owner->second].record.identity;
      add(figure, "its name is that of " + std::to_string(other) + ", too");
    }
  }

  // Of a queue, and of what a site names itself, servers means something else.
  void look_at_servers(std::size_t station) {
    const FigureRecord& record = diagram_[station].record;
    const bool counts = record.kind == FigureKind::node || record.kind == FigureKind::vbox;
    if (counts && record.servers < 1) add(station, "no servers");
  }

  void look_at_ways() {
    std::map<std::size_t, std::map<std::string, double>> sums;
    for (const NetworkArc& arc : network_.arcs) {
      if (arc.from == nowhere) add(arc.figure, "it begins nowhere: its first point is free");
      for (const auto& [job_class, share] : arc.shares)
        sums[arc.from][job_class] += share;
    }
    for (const auto& figures : {network_.stations, network_.sources}) {
      for (const std::size_t figure : figures) {
        if (!sums.contains(figure)) add(figure, "no way out: no arc leaves it");
      }
    }
    for (const auto& [figure, of_figure] : sums) {
      for (const auto& [job_class, sum] : of_figure)
        look_at_sum(figure, job_class, sum);
    }
  }

  void look_at_sum(std::size_t figure, const std::string& job_class, double sum) {
    if (figure == nowhere || std::abs(sum - 1) <= probability_tolerance) return;
    const std::string whose = job_class.empty() ? "" : " for class " + job_class;
    add(figure,
        "the probabilities of what leaves it add to " + shown_real(sum) + ", not 1" + whose);
  }

  const KeptDiagram& diagram_;
  const Network& network_;
  std::vector<Finding> found_;
};

}  // namespace

Network network_of(const KeptDiagram& diagram) {
  Network network;
  network.arcs = arcs_of(diagram);
  std::set<std::size_t> ends;
  for (const NetworkArc& arc : network.arcs) {
    ends.insert(arc.from);
    ends.insert(arc.to);
  }
  for (std::size_t i = 0; i < diagram.size(); ++i) {
    const FigureRecord& figure = diagram[i].record;
    if (figure.kind == FigureKind::tel) network.sources.push_back(i);
    if (is_station(figure, ends.contains(i))) network.stations.push_back(i);
  }
  for (const auto& [from, arcs] : ways_of(network)) {
    for (const std::string& job_class : classes_of(diagram, arcs))
      share_out(diagram, arcs, job_class);
  }
  return network;
}

std::vector<Finding> findings_of(const KeptDiagram& diagram, const Network& network) {
  return Findings(diagram, network).all();
}

}  // namespace torve
