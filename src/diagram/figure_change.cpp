#include "diagram/figure_change.hpp"

#include "diagram/drawing.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"

namespace torve {

namespace {

void erase(Vobj* figure) {
  if (figure == nullptr || (figure->phase & phase_on_canvas) == 0) return;
  draw_vobj(VectorMode::clipped, figure, figure_erase);
}

void draw(Vobj* figure) {
  if (figure == nullptr || (figure->phase & phase_draw) == 0) return;
  draw_vobj(VectorMode::clipped, figure, figure_draw);
  figure->phase = phase_on_canvas | phase_draw;
}

void bring_to_top(Vobj* figure) {
  cvobj = figure;
  pick_up_cvobj();
}

bool is_on_top(const Vobj* figure) {
  if (figure->label == nullptr) return figure == lastvobj;
  return figure->label == lastvobj && figure == lastvobj->prev;
}

}  // namespace

FigureChange::FigureChange(Vobj* figure)
    : beneath_windows_(diagram_area(), PaintOn::figures),
      figure_(figure),
      anchor_(anchor_of(*figure)) {
  raise_figure(figure);
  erase(figure->label);
  erase(figure);
}

FigureChange::~FigureChange() {
  const FigureAnchor moved = anchor_of(*figure_);
  if (Vobj* label = figure_->label) shift(label, moved.x - anchor_.x, moved.y - anchor_.y);
  draw(figure_);
  draw(figure_->label);
  note_change();
}

void raise_figure(Vobj* figure) {
  cvobj = figure;
  if (is_on_top(figure)) return;
  const CanvasPaint beneath_windows(diagram_area(), PaintOn::figures);
  bring_to_top(figure);
  if (figure->label == nullptr) return;
  bring_to_top(figure->label);
  cvobj = figure;
}

void cut_figure(Vobj* figure) {
  close_property_menu(figure);
  const CanvasPaint beneath_windows(diagram_area(), PaintOn::figures);
  raise_figure(figure);
  erase(figure->label);
  erase(figure);
  if (figure->label != nullptr) remove_vobj(figure->label);
  remove_vobj(figure);
}

}  // namespace torve
