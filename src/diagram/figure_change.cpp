#include "diagram/figure_change.hpp"

#include <new>

#include "diagram/drawing.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/model/arcs.hpp"

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

// Its figure's anchor has been somewhere else.
void take_label_along(const Vobj& figure, const FigureAnchor& before) {
  if (figure.label == nullptr) return;
  const FigureAnchor now = anchor_of(figure);
  shift(figure.label, now.x - before.x, now.y - before.y);
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
  for (Vobj* follower : followers_of(*figure))
    followers_.emplace_back(follower, anchor_of(*follower));
  if (followers_.empty()) {
    erase(figure->label);
    erase(figure);
  } else {
    room_ = room_of_all();
    lift_figures(room_);
  }
}

// What the figure takes with all that goes along with it.
Rect FigureChange::room_of_all() const {
  Rect room;
  const auto include = [&room](const Vobj* figure) {
    if (figure != nullptr) room = bounding_box(room, room_of(*figure));
  };
  include(figure_);
  include(figure_->label);
  for (const auto& [follower, anchor] : followers_) {
    include(follower);
    include(follower->label);
  }
  return room;
}

// Without memory the figure is not drawn. Then the reserve is gone, too, and the program ends.
FigureChange::~FigureChange() {
  try {
    finish();
  } catch (const std::bad_alloc&) {
    return;
  }
}

void FigureChange::finish() {
  take_label_along(*figure_, anchor_);
  for (const auto& [follower, anchor] : followers_) {
    follow_holds(*follower);
    take_label_along(*follower, anchor);
  }
  if (followers_.empty()) {
    draw(figure_);
    draw(figure_->label);
  } else {
    // What lay above is off the canvas at the old place only.
    room_ = bounding_box(room_, room_of_all());
    lift_figures(room_);
    lay_figures(room_);
  }
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
  for (Vobj* follower : followers_of(*figure)) {
    if (follower->from.figure == figure->serial) follower->from = {};
    if (follower->to.figure == figure->serial) follower->to = {};
  }
  erase(figure->label);
  erase(figure);
  if (figure->label != nullptr) remove_vobj(figure->label);
  remove_vobj(figure);
}

}  // namespace torve
