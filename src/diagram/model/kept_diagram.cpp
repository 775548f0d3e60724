#include "diagram/model/kept_diagram.hpp"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "diagram/model/figure_properties.hpp"

namespace torve {

namespace {

// What cannot be seen is not kept, and nothing holds on to it.
void forget_unseen(Hold& hold) {
  if (hold.figure == 0) return;
  const Vobj* figure = figure_of(hold.figure);
  if (figure == nullptr || !is_seen(*figure)) hold = {};
}

}  // namespace

KeptFigure keep_figure(const Vobj& figure) {
  const bool has_label = figure.label != nullptr && is_seen(*figure.label);
  KeptFigure kept = {figure, has_label ? figure.label->serial : 0};
  kept.record.phase = phase_on_canvas | phase_draw;
  settle_codes(kept.record);
  forget_unseen(kept.record.from);
  forget_unseen(kept.record.to);
  return kept;
}

KeptDiagram keep_diagram() {
  KeptDiagram kept;
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (is_seen(*figure)) kept.push_back(keep_figure(*figure));
  }
  return kept;
}

SharedDiagram share_diagram() {
  SharedDiagram shared;
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (!is_seen(*figure)) continue;
    KeptFigure now = keep_figure(*figure);
    if (figure->kept == nullptr || !(*figure->kept == now))
      figure->kept = std::make_shared<const KeptFigure>(std::move(now));
    shared.push_back(figure->kept);
  }
  return shared;
}

bool have_same_figures(const SharedDiagram& one, const SharedDiagram& other) {
  if (one.size() != other.size()) return false;
  std::unordered_map<int, const KeptFigure*> figures;
  for (const auto& figure : one)
    figures.emplace(figure->record.serial, figure.get());
  return std::all_of(other.begin(), other.end(), [&figures](const auto& figure) {
    const auto found = figures.find(figure->record.serial);
    if (found == figures.end()) return false;
    return found->second == figure.get() || *found->second == *figure;
  });
}

}  // namespace torve
