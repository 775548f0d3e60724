// A diagram as a queueing network: who serves, where work comes from, which ways it goes.
//
// Nodes, queues and those boxes that an arc holds on to are stations; other boxes are frames.
// Telephones are sources. Arcs are ways, in the direction of their heads: from the figure that
// their first point holds on to, to that of their second one. An arc whose second point is free
// leads out of the network, and is a sink; one that ends on a telephone gives the work back to its
// source. Lines, arrows, circles and texts say nothing.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "diagram/model/kept_diagram.hpp"

namespace torve {

inline constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

/// Figures are named by their place in the diagram, from 0.
struct NetworkArc {
  std::size_t figure = 0;
  std::size_t from = nowhere, to = nowhere;
  /// What part of the work that leaves `from` goes this way, 0 .. 1, by class. Where no arc that
  /// leaves `from` has a class, the only one is "", which is everybody. An arc without a
  /// probability of its own has an equal share of what the others leave.
  std::map<std::string, double> shares;
};

struct Network {
  std::vector<std::size_t> stations, sources;
  std::vector<NetworkArc> arcs;
};

[[nodiscard]] Network network_of(const KeptDiagram& diagram);

/// Something that is missing or contradicts itself.
struct Finding {
  std::size_t figure = nowhere;  // the one that is meant, if it is one
  std::string text;
};

/// How far from 1 probabilities may add up to, because decimals are rounded.
inline constexpr double probability_tolerance = 1e-6;

/// What is wrong with a network: no source, an arc that begins nowhere, probabilities that do not
/// add to 1, a node or box without servers, a station or source that nothing leaves, a name that is
/// somebody else's, too. In the order of the figures, what concerns none of them first.
[[nodiscard]] std::vector<Finding> findings_of(const KeptDiagram& diagram, const Network& network);

}  // namespace torve
