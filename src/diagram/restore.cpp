#include "diagram/restore.hpp"

#include <algorithm>
#include <utility>

#include "diagram/drawing.hpp"
#include "diagram/labels.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

bool is_kept(const KeptDiagram& kept, int serial) {
  return std::any_of(kept.begin(), kept.end(),
                     [serial](const KeptFigure& figure) { return figure.record.serial == serial; });
}

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
void bring_back(const KeptFigure& kept) {
  Vobj* figure = figure_of(kept.record.serial);
  if (figure == nullptr) {
    figure = create_vector_obj(kept.record.kind);
    if (figure == nullptr) return;
  } else {
    move_to_end(figure);
  }
  Vobj record = kept.record;
  record.next = figure->next;
  record.prev = figure->prev;
  record.menu_id = figure->menu_id;
  record.saved = std::move(figure->saved);
  record.label = nullptr;
  *figure = std::move(record);
}

void link_label(const KeptFigure& kept) {
  if (Vobj* owner = figure_of(kept.record.serial)) owner->label = figure_of(kept.label);
}

}  // namespace

void restore_diagram(const KeptDiagram& kept) {
  const auto goes = [&kept](const Vobj& figure) {
    return figure.phase != 0 && !is_kept(kept, figure.serial);
  };
  for_figures(goes, close_property_menu);  // not while the windows are off the canvas
  const CanvasPaint beneath_windows(diagram_area(), PaintOn::figures);
  lift_figures();
  for_figures(goes, remove_vobj);
  for (const KeptFigure& figure : kept)
    bring_back(figure);
  for (const KeptFigure& figure : kept)
    link_label(figure);
  for_figures([](const Vobj& figure) { return figure.phase == 0; }, move_to_end);
  lay_figures();
}

}  // namespace torve
