#include "diagram/arc_editing.hpp"

#include <cstdlib>

#include "diagram/alignment.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/history.hpp"
#include "diagram/model/arcs.hpp"

namespace torve {

namespace {

constexpr int same_place = 3;  // pixels from the last point, and the arc ends there

std::size_t grabbed_bend = 0;
bool was_dragged = false;  // the point that the last press has made

FigureAnchor first_of(const Vobj& arc) {
  return {arc.x1, arc.y1};
}

FigureAnchor second_of(const Vobj& arc) {
  return {arc.x2, arc.y2};
}

// What the last piece begins at.
FigureAnchor last_but_one(const Vobj& arc) {
  return arc.bends.empty() ? first_of(arc) : arc.bends.back();
}

bool is_near(const FigureAnchor& one, const PointerEvent& press) {
  return std::abs(one.x - press.x) <= same_place && std::abs(one.y - press.y) <= same_place;
}

void set_second(Vobj& arc, const FigureAnchor& point) {
  arc.x2 = point.x;
  arc.y2 = point.y;
  arc.to = hold_on(figure_to_hold(point.x, point.y), point.x, point.y);
}

void set_first(Vobj& arc, const FigureAnchor& point) {
  arc.x1 = point.x;
  arc.y1 = point.y;
  arc.from = hold_on(figure_to_hold(point.x, point.y), point.x, point.y);
}

void begin(const PointerEvent& press) {
  prepare_change();
  const FigureAnchor point = on_grid(press);
  set_first(*cvobj, point);
  cvobj->x2 = point.x;
  cvobj->y2 = point.y;
  cvobj->phase = phase_draw;
  vobjmode = mode_arc_going_on;
}

// The arc is done, the tool ready for the next one.
void end() {
  arm_again(FigureKind::arc);
}

void add_point(const PointerEvent& press) {
  Vobj& arc = *cvobj;
  const bool has_piece = shows(arc);
  if (is_near(second_of(arc), press)) {
    if (has_piece) end();
    return;
  }
  {
    const FigureAnchor point = in_line(second_of(arc), press);
    const FigureChange change(&arc);
    if (has_piece) arc.bends.push_back(second_of(arc));
    set_second(arc, point);
  }
  if (arc.to.figure != 0 || arc.bends.size() == most_bends) end();
}

void press_on(const PointerEvent& press) {
  const bool was_drawn = was_dragged && vobjmode == mode_arc_going_on && cvobj->to.figure != 0;
  was_dragged = false;
  if (was_drawn) end();
  if (cvobj == nullptr) return;
  if (vobjmode == mode_arc_armed) {
    begin(press);
  } else {
    add_point(press);
  }
}

void drag_second(const PointerEvent& press) {
  const FigureAnchor point = in_line(last_but_one(*cvobj), press);
  const FigureChange change(cvobj);
  set_second(*cvobj, point);
}

void drag_first(const PointerEvent& press) {
  const FigureAnchor next = cvobj->bends.empty() ? second_of(*cvobj) : cvobj->bends.front();
  const FigureAnchor point = in_line(next, press);
  const FigureChange change(cvobj);
  set_first(*cvobj, point);
}

void drag_bend(const PointerEvent& press) {
  if (grabbed_bend >= cvobj->bends.size()) return;
  const FigureAnchor point =
      in_line(grabbed_bend == 0 ? first_of(*cvobj) : cvobj->bends[grabbed_bend - 1], press);
  const FigureChange change(cvobj);
  cvobj->bends[grabbed_bend] = point;
}

}  // namespace

bool is_arc_mode(int mode) {
  return mode >= mode_arc_armed && mode <= mode_arc_bend;
}

void grab_bend(std::size_t bend) {
  grabbed_bend = bend;
}

void edit_arc(const PointerEvent& press) {
  const bool begins = press.action == PointerAction::press;
  if (vobjmode == mode_arc_armed || vobjmode == mode_arc_going_on) {
    if (begins) return press_on(press);
    if (vobjmode == mode_arc_armed) return;  // its press has ended an arc
    was_dragged = true;
    return drag_second(press);
  }
  if (begins) prepare_placing();
  if (vobjmode == mode_arc_end) return drag_second(press);
  if (vobjmode == mode_arc_head) return drag_first(press);
  drag_bend(press);
}

}  // namespace torve
