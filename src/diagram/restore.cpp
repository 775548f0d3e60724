#include "diagram/restore.hpp"

#include <unordered_set>
#include <vector>

#include "diagram/drawing.hpp"
#include "diagram/labels.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

template <typename Wanted, typename Do>
void for_figures(Wanted wanted, Do what) {
  for (Vobj* figure = firstvobj; figure != nullptr;) {
    Vobj* next = figure->next;
    if (wanted(*figure)) what(figure);
    figure = next;
  }
}

void move_to_end(Vobj* figure) {
  unlink_vobj(figure);
  link_last_vobj(figure);
}

// The figure as it was, at the end of the list.
void bring_back(const FigureRecord& kept) {
  Vobj* figure = figure_of(kept.serial);
  if (figure == nullptr) {
    figure = create_vector_obj(kept.kind, kept.serial, kept.identity);
    if (figure == nullptr) return;
  } else {
    move_to_end(figure);
  }
  static_cast<FigureRecord&>(*figure) = kept;
}

void put_label_back(const KeptFigure& kept) {
  if (Vobj* owner = figure_of(kept.record.serial)) link_label(owner, figure_of(kept.label));
}

}  // namespace

void restore_diagram(std::span<const KeptFigure* const> kept) {
  std::unordered_set<int> serials;
  for (const KeptFigure* figure : kept)
    serials.insert(figure->record.serial);
  const auto goes = [&serials](const Vobj& figure) {
    return figure.phase != 0 && !serials.contains(figure.serial);
  };
  for_figures(goes, close_property_menu);  // not while the windows are off the canvas
  const CanvasPaint beneath_windows(diagram_area(), PaintOn::figures);
  lift_figures();
  for_figures(goes, remove_vobj);
  for (const KeptFigure* figure : kept)
    bring_back(figure->record);
  for (const KeptFigure* figure : kept)
    put_label_back(*figure);
  for_figures([](const Vobj& figure) { return figure.phase == 0; }, move_to_end);
  lay_figures();
}

void restore_diagram(const KeptDiagram& kept) {
  std::vector<const KeptFigure*> figures;
  figures.reserve(kept.size());
  for (const KeptFigure& figure : kept)
    figures.push_back(&figure);
  restore_diagram(figures);
}

}  // namespace torve
