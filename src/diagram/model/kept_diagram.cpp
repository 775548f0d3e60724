#include "diagram/model/kept_diagram.hpp"

namespace torve {

KeptDiagram keep_diagram() {
  KeptDiagram kept;
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (!is_seen(*figure)) continue;
    kept.push_back({*figure, figure->label != nullptr ? figure->label->serial : 0});
    kept.back().record.saved.clear();
  }
  return kept;
}

}  // namespace torve
