// A network for other programs, and for people at a terminal.
#pragma once

#include <string>

#include "diagram/model/network.hpp"

namespace torve {

/// A line for each station, source, arc and sink (an arc that leads out), then one for each
/// finding: what it is, the figure's identity and its name between quotes, UTF-8.
[[nodiscard]] std::string network_to_text(const KeptDiagram& diagram, const Network& network,
                                          const std::vector<Finding>& findings);

/// Everything that the diagram's file holds, the network and the findings, as
/// data/diagram.schema.json describes it. Figures are named by their identities.
[[nodiscard]] std::string network_to_json(const KeptDiagram& diagram, const Network& network,
                                          const std::vector<Finding>& findings);

}  // namespace torve
