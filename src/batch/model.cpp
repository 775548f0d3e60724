#include "batch/model.hpp"

#include "batch/status.hpp"
#include "batch/streams.hpp"
#include "diagram/model/diagram_input.hpp"
#include "diagram/model/network_text.hpp"

namespace torve {

int run_model(const Request& request) {
  const InputName input(request.words[0]);
  if (!input.outcome().is_done()) return status_of(request, input.outcome());
  KeptDiagram diagram;
  const Outcome read = read_diagram_file(input.name(), &diagram);
  if (!read.is_done()) return status_of(request, read);
  const Network network = network_of(diagram);
  const std::vector<Finding> findings = findings_of(diagram, network);
  const std::string text = request.json ? network_to_json(diagram, network, findings)
                                        : network_to_text(diagram, network, findings);
  const int status = status_of(request, OutputAside().write(text));
  return findings.empty() ? status : exit_failed;
}

}  // namespace torve
