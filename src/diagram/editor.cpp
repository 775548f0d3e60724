#include "diagram/editor.hpp"

#include <cstdlib>
#include <string>

#include "diagram/alignment.hpp"
#include "diagram/arc_editing.hpp"
#include "diagram/drawing.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/figure_menu.hpp"
#include "diagram/figure_points.hpp"
#include "diagram/handles.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/model/arcs.hpp"
#include "diagram/picking.hpp"
#include "diagram/properties/property_menus.hpp"
#include "diagram/text_editing.hpp"
#include "dialogs/popup_menu.hpp"
#include "dialogs/strip.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/engine.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr int nodec_reach = 10;  // from a nodec's first point to its second column at creation

int kind_number(const Vobj& figure) {
  return static_cast<int>(figure.kind);
}

// A tool that is left takes with it what it has made and nobody can see.
void leave_tool() {
  close_figure_menu();
  for (Vobj* figure = firstvobj; figure != nullptr;) {
    Vobj* next = figure->next;
    if (!is_seen(*figure)) cut_figure(figure);
    figure = next;
  }
  cvobj = nullptr;
}

int armed_mode(FigureKind kind) {
  return kind == FigureKind::arc ? mode_arc_armed : static_cast<int>(kind) + mode_armed;
}

int arm(FigureKind kind) {
  if (vobjmode == armed_mode(kind)) return 0;
  arm_again(kind);
  flush_mouse();
  return 0;
}

// --- pointer mode -------------------------------------------------------------------------------

// What the strip says while a property menu is in use: kind, number and name of its figure.
std::string name_of_menu(int id) {
  const Vobj* figure = figure_of_menu(id);
  if (figure == nullptr) return {};
  return std::string(row_of(figure->kind).title) + ' ' + std::to_string(figure->identity) + ' ' +
         figure->name;
}

int free_property_menu() {
  for (int id = first_property_menu_id; id <= last_property_menu_id; ++id) {
    if (wd(id).kind == kind_free) return id;
  }
  return 0;
}

void show_property_menu(Vobj* figure, int x, int y) {
  int id = property_menu_of(*figure);
  if (id == 0) {
    id = free_property_menu();
    if (id == 0 || fill_property_menu(figure, id, x, y) != 0) return;
  }
  static_cast<void>(put_wd_objects(id, id));
  say_in_strip(name_of_menu(id));
}

void open_properties(Vobj* figure, int x, int y) {
  if (has_property_menu(*figure)) {
    raise_figure(figure);
    vobjmode = mode_properties;
    show_property_menu(figure, x, y);
  }
  flush_mouse();
}

void grab(Vobj* figure, int mode) {
  prepare_change();
  raise_figure(figure);
  vobjmode = mode;
}

// What a press goes on to do with a part of a figure.
int mode_of_part(const Vobj& figure, FigurePart part) {
  const bool is_arc = figure.kind == FigureKind::arc;
  switch (part) {
    case FigurePart::end:
      return is_arc ? mode_arc_end : kind_number(figure);
    case FigurePart::head:
      return is_arc ? mode_arc_head : -kind_number(figure);
    case FigurePart::bend:
      return mode_arc_bend;
    default:
      return mode_moving;
  }
}

PressUse pick(const PointerEvent& press) {
  const auto [figure, part, bend] = picked_at(press);
  if (part == FigurePart::none) return PressUse::goes_on;
  if (part == FigurePart::properties) {
    open_properties(figure, press.x, press.y);
    return PressUse::spent;
  }
  if (press.button != first_button) {
    open_figure_menu(figure, press.x, press.y);
    return PressUse::spent;
  }
  grab(figure, mode_of_part(*figure, part));
  grab_bend(bend);
  return PressUse::goes_on;
}

// --- placing, stretching, moving ----------------------------------------------------------------

// What is put somewhere else by itself holds on to its figure there, or, an arc, lets go.
void hold_anew(Vobj* figure) {
  if (figure->kind == FigureKind::arc) figure->from = figure->to = {};
  if (figure->from.figure != 0)
    figure->from = hold_on(figure_of(figure->from.figure), figure->x1, figure->y1);
}

void place(const FigureAnchor& point) {
  prepare_change();
  cvobj->x1 = cvobj->x2 = point.x;
  cvobj->y1 = cvobj->y2 = point.y;
  cvobj->phase = phase_draw;
  vobjmode -= mode_armed;
}

void stretch(FigureAnchor point) {
  if (y1_ge_y2(*cvobj) && point.y < cvobj->y1) {
    point.y = cvobj->y1;
    setmouse(point.x, point.y);
  }
  const FigureChange change(cvobj);
  set_x2_y2(cvobj, point.x, point.y);
  hold_anew(cvobj);
}

void move_centre(const FigureAnchor& point) {
  const FigureAnchor centre = centre_of(*cvobj);
  const FigureChange change(cvobj);
  shift(cvobj, point.x - centre.x, point.y - centre.y);
  hold_anew(cvobj);
}

void move_head(const FigureAnchor& point) {
  const FigureChange change(cvobj);
  set_x1_y1(cvobj, point.x, point.y);
  hold_anew(cvobj);
}

// Shift means something for what has a direction.
FigureAnchor aligned(const PointerEvent& press, const FigureAnchor& from) {
  const bool has_direction = cvobj->kind == FigureKind::vline || cvobj->kind == FigureKind::arrow;
  return has_direction ? in_line(from, press) : on_grid(press);
}

bool is_armed() {
  return vobjmode > mode_armed && vobjmode <= mode_armed + static_cast<int>(FigureKind::nodec);
}

bool is_kind(int mode) {
  return mode >= static_cast<int>(FigureKind::arrow) && mode <= static_cast<int>(FigureKind::nodec);
}

void edit(const PointerEvent& press) {
  if (is_armed()) {
    place(on_grid(press));
  } else if (press.action == PointerAction::press) {
    prepare_placing();  // a later press goes on with the figure in hand
  }
  if (is_kind(vobjmode)) {
    stretch(aligned(press, {cvobj->x1, cvobj->y1}));
  } else if (vobjmode == mode_moving) {
    move_centre(on_grid(press));
  } else if (is_kind(-vobjmode)) {
    move_head(aligned(press, {cvobj->x2, cvobj->y2}));
  }
}

}  // namespace

void install_diagram() {
  set_figure_hooks(
      {.lift = lift_figures,
       .lay = lay_figures,
       .refresh = [](const Rect& rect) { refresh_cvobj(rect.x1, rect.y1, rect.x2, rect.y2); },
       .lift_marks = lift_handles,
       .lay_marks = lay_handles});
  set_menu_note(name_of_menu);
}

PressUse edit_diagram(const PointerEvent& press) {
  if (press.button != first_button && press.button != second_button) return PressUse::goes_on;
  if (vobjmode == mode_pointer) {
    return press.action == PointerAction::press ? pick(press) : PressUse::goes_on;
  }
  if (press.button == first_button && press.x <= last_diagram_column && cvobj != nullptr) {
    if (is_arc_mode(vobjmode)) {
      edit_arc(press);
    } else if (vobjmode == mode_text_armed || vobjmode == mode_typing) {
      press_with_text(press);
    } else {
      edit(press);
    }
  }
  return PressUse::goes_on;
}

void vect_ed(int button, int x, int y) {
  const bool begins = last_event.type == InputEvent::Type::press;
  const PointerEvent press = {.action = begins ? PointerAction::press : PointerAction::motion,
                              .button = button,
                              .x = x,
                              .y = y,
                              .modifiers = last_event.modifiers};
  if (edit_diagram(press) == PressUse::spent) spend_press();
}

bool diagram_key(int key) {
  constexpr int control_d = 4, control_y = 25, control_z = 26;
  switch (key) {
    case control_d:
      double_current_figure();
      return true;
    case control_y:
      redo_ope();
      return true;
    case control_z:
      undo_ope();
      return true;
    default:
      return type_key(key);
  }
}

bool figure_is_in_hand() {
  const bool has_arc = is_arc_mode(vobjmode) && vobjmode != mode_arc_armed;
  return cvobj != nullptr && (vobjmode == mode_moving || is_kind(std::abs(vobjmode)) || has_arc);
}

bool is_typing() {
  return vobjmode == mode_typing;
}

void arm_again(FigureKind kind) {
  leave_tool();
  cvobj = create_vector_obj(kind);
  vobjmode = cvobj != nullptr ? armed_mode(kind) : mode_idle;
}

void leave_armed_figure() {
  if (cvobj != nullptr && cvobj->phase == 0) cut_figure(cvobj);
}

int node_ope() {
  return arm(FigureKind::node);
}

int nodeb_ope() {
  return arm(FigureKind::nodeb);
}

int nodec_ope() {
  arm(FigureKind::nodec);
  if (cvobj != nullptr && cvobj->phase == 0) cvobj->x2 = cvobj->x1 + nodec_reach;
  return 0;
}

int queue_ope() {
  return arm(FigureKind::queue);
}

int tele_ope() {
  return arm(FigureKind::tel);
}

int vbox_ope() {
  return arm(FigureKind::vbox);
}

int vline_ope() {
  return arm(FigureKind::vline);
}

int arrow_ope() {
  return arm(FigureKind::arrow);
}

int arc_ope() {
  return arm(FigureKind::arc);
}

int text_ope() {
  return arm(FigureKind::label);
}

int pointer_ope() {
  leave_tool();
  vobjmode = mode_pointer;
  return 0;
}

int exit_ope() {
  leave_tool();
  vobjmode = mode_idle;
  return 0;
}

}  // namespace torve
