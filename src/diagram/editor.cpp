#include "diagram/editor.hpp"

#include <cstdlib>

#include "diagram/drawing.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/figure_menu.hpp"
#include "diagram/figure_points.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/picking.hpp"
#include "diagram/properties/property_menus.hpp"
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

int arm(FigureKind kind) {
  const int mode = static_cast<int>(kind) + mode_armed;
  if (vobjmode == mode) return 0;
  leave_tool();
  cvobj = create_vector_obj(kind);
  vobjmode = cvobj != nullptr ? mode : mode_idle;
  flush_mouse();
  return 0;
}

// --- pointer mode -------------------------------------------------------------------------------

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

PressUse pick(const PointerEvent& press) {
  const auto [figure, part] = picked_at(press);
  switch (part) {
    case FigurePart::middle:
      if (press.button != first_button) {
        open_figure_menu(figure, press.x, press.y);
        return PressUse::spent;
      }
      grab(figure, mode_moving);
      break;
    case FigurePart::end:
      grab(figure, kind_number(*figure));
      break;
    case FigurePart::head:
      grab(figure, -kind_number(*figure));
      break;
    case FigurePart::properties:
      open_properties(figure, press.x, press.y);
      return PressUse::spent;
    case FigurePart::none:
      break;
  }
  return PressUse::goes_on;
}

// --- placing, stretching, moving ----------------------------------------------------------------

void place(int x, int y) {
  prepare_change();
  cvobj->x1 = cvobj->x2 = x;
  cvobj->y1 = cvobj->y2 = y;
  cvobj->phase = phase_draw;
  vobjmode -= mode_armed;
}

void stretch(int x, int y) {
  if (y1_ge_y2(*cvobj) && y < cvobj->y1) {
    y = cvobj->y1;
    setmouse(x, y);
  }
  const FigureChange change(cvobj);
  set_x2_y2(cvobj, x, y);
}

void move_centre(int x, int y) {
  const FigureAnchor centre = centre_of(*cvobj);
  const FigureChange change(cvobj);
  shift(cvobj, x - centre.x, y - centre.y);
}

void move_head(int x, int y) {
  const FigureChange change(cvobj);
  set_x1_y1(cvobj, x, y);
}

bool is_armed() {
  return vobjmode > mode_armed && vobjmode <= mode_armed + static_cast<int>(FigureKind::nodec);
}

bool is_kind(int mode) {
  return mode >= static_cast<int>(FigureKind::arrow) && mode <= static_cast<int>(FigureKind::nodec);
}

void edit(const PointerEvent& press) {
  if (is_armed()) {
    place(press.x, press.y);
  } else if (press.action == PointerAction::press) {
    prepare_placing();  // a later press goes on with the figure in hand
  }
  if (is_kind(vobjmode)) {
    stretch(press.x, press.y);
  } else if (vobjmode == mode_moving) {
    move_centre(press.x, press.y);
  } else if (is_kind(-vobjmode)) {
    move_head(press.x, press.y);
  }
}

}  // namespace

void install_diagram() {
  set_figure_hooks({.lift = lift_figures, .lay = lay_figures, .refresh = [](const Rect& rect) {
                      refresh_cvobj(rect.x1, rect.y1, rect.x2, rect.y2);
                    }});
}

PressUse edit_diagram(const PointerEvent& press) {
  if (press.button != first_button && press.button != second_button) return PressUse::goes_on;
  if (vobjmode == mode_pointer) {
    return press.action == PointerAction::press ? pick(press) : PressUse::goes_on;
  }
  if (press.button == first_button && press.x <= last_diagram_column && cvobj != nullptr) {
    edit(press);
  }
  return PressUse::goes_on;
}

void vect_ed(int button, int x, int y) {
  const bool begins = last_event.type == InputEvent::Type::press;
  const PointerEvent press = {.action = begins ? PointerAction::press : PointerAction::motion,
                              .button = button,
                              .x = x,
                              .y = y};
  if (edit_diagram(press) == PressUse::spent) spend_press();
}

bool figure_is_in_hand() {
  return cvobj != nullptr && (vobjmode == mode_moving || is_kind(std::abs(vobjmode)));
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
