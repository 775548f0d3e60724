#include "diagram/editor.hpp"

#include <algorithm>

#include "diagram/drawing.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "text/fonts.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

constexpr int tel_width = 22;  // of the telephone, pixels
constexpr int tel_height = 14;
constexpr int label_height = 10;
constexpr int nodec_reach = 10;     // from a nodec's first point to its second column at creation
constexpr int grab_reach = 2;       // columns beside a point that still hit it
constexpr int least_tolerance = 2;  // rows
constexpr double tolerance_share = 0.1;  // of a figure's height

// Figures are painted above the plots and beneath the window objects.
CanvasPaint beneath_windows() {
  return CanvasPaint({xxmin, yymin, xxmax, yymax}, PaintOn::figures);
}

bool is_on_canvas(const Vobj& figure) {
  return (figure.phase & phase_on_canvas) != 0;
}

void erase(Vobj* figure) {
  if (is_on_canvas(*figure)) draw_vobj(VectorMode::clipped, figure, figure_erase);
}

void draw(Vobj* figure) {
  draw_vobj(VectorMode::clipped, figure, figure_draw);
}

int kind_number(const Vobj& figure) {
  return static_cast<int>(figure.kind);
}

// Erases, changes and draws a figure.
template <typename Change>
void change(Vobj* figure, Change how) {
  const CanvasPaint scope = beneath_windows();
  erase(figure);
  how();
  if ((figure->phase & phase_draw) != 0) draw(figure);
  figure->phase = phase_on_canvas | phase_draw;
}

void remove_figure(Vobj* figure) {
  const CanvasPaint scope = beneath_windows();
  cvobj = figure;
  pick_up_cvobj();
  erase(figure);
  remove_vobj(figure);
  cvobj = nullptr;
}

// A tool that is left takes with it what it has made and nobody can see.
void leave_tool() {
  for (Vobj* figure = firstvobj; figure != nullptr;) {
    Vobj* next = figure->next;
    if (figure->phase == 0 || !shows(figure->kind, place_of(*figure))) remove_figure(figure);
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

// --- picking ------------------------------------------------------------------------------------

enum class Part { none, middle, end, head };

int tolerance_of(const Vobj& figure) {
  const int share = static_cast<int>((figure.y2 - figure.y1) * tolerance_share);
  return std::max(share, least_tolerance);
}

bool beside(int column, int x) {
  return column - grab_reach < x && x < column + grab_reach;
}

Part part_at(const Vobj& figure, int x, int y) {
  const int cx = (figure.x1 + figure.x2) / 2;
  const int cy = (figure.y1 + figure.y2) / 2;
  const int t = tolerance_of(figure);
  if (beside(cx, x) && cy - t < y && y < cy + t) return Part::middle;
  if (beside(figure.x2, x) && figure.y2 - t < y && y <= figure.y2) return Part::end;
  if (beside(figure.x1, x) && figure.y1 <= y && y < figure.y1 + t) return Part::head;
  return Part::none;
}

int mode_of(Part part, const Vobj& figure) {
  switch (part) {
    case Part::middle:
      return mode_moving;
    case Part::end:
      return kind_number(figure);
    case Part::head:
      return -kind_number(figure);
    default:
      return mode_pointer;
  }
}

void pick(int x, int y) {
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (figure->phase == 0) continue;
    const Part part = part_at(*figure, x, y);
    if (part == Part::none) continue;
    const CanvasPaint scope = beneath_windows();
    cvobj = figure;
    pick_up_cvobj();
    vobjmode = mode_of(part, *figure);
    return;
  }
}

// --- placing, stretching, moving ----------------------------------------------------------------

void place(int x, int y) {
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
  change(cvobj, [=] { set_x2_y2(cvobj, x, y); });
}

void move_centre(int x, int y) {
  const int dx = x - (cvobj->x1 + cvobj->x2) / 2;
  const int dy = y - (cvobj->y1 + cvobj->y2) / 2;
  change(cvobj, [=] {
    cvobj->x1 += dx;
    cvobj->x2 += dx;
    cvobj->y1 += dy;
    cvobj->y2 += dy;
  });
}

bool is_armed() {
  return vobjmode > mode_armed && vobjmode <= mode_armed + static_cast<int>(FigureKind::nodec);
}

bool is_kind(int mode) {
  return mode >= static_cast<int>(FigureKind::arrow) && mode <= static_cast<int>(FigureKind::nodec);
}

bool is_upright(FigureKind kind) {
  return kind == FigureKind::node || kind == FigureKind::queue || kind == FigureKind::nodeb;
}

int label_width(const Vobj& label) {
  return fntlen2(label.text);
}

}  // namespace

void install_diagram() {
  set_figure_hooks({.lift = lift_figures, .lay = lay_figures});
}

void vect_ed(int button, int x, int y) {
  if (button != 1) return;
  if (vobjmode == mode_pointer) {
    pick(x, y);
    return;
  }
  if (x > last_diagram_column || cvobj == nullptr) return;
  if (is_armed()) place(x, y);
  if (is_kind(vobjmode)) {
    stretch(x, y);
  } else if (vobjmode == mode_moving) {
    move_centre(x, y);
  } else if (is_kind(-vobjmode)) {
    change(cvobj, [=] { set_x1_y1(cvobj, x, y); });
  }
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

int set_x2_y2(Vobj* figure, int x, int y) {
  figure->x2 = x;
  figure->y2 = y;
  if (is_upright(figure->kind) || figure->kind == FigureKind::nodec) figure->x1 = x;
  if (figure->kind == FigureKind::tel) {
    figure->x1 = x - tel_width;
    figure->y1 = y - tel_height;
  } else if (figure->kind == FigureKind::label) {
    figure->x1 = x - label_width(*figure);
    figure->y1 = y - label_height;
  }
  return 0;
}

int set_x1_y1(Vobj* figure, int x, int y) {
  figure->x1 = x;
  figure->y1 = y;
  if (is_upright(figure->kind)) figure->x2 = x;
  if (figure->kind == FigureKind::tel) {
    figure->x2 = x + tel_width;
    figure->y2 = y + tel_height;
  } else if (figure->kind == FigureKind::label) {
    figure->x2 = x + label_width(*figure);
    figure->y2 = y + label_height;
  }
  return 0;
}

bool y1_ge_y2(const Vobj& figure) {
  return is_upright(figure.kind) || figure.kind == FigureKind::nodec ||
         figure.kind == FigureKind::tel || figure.kind == FigureKind::label;
}

}  // namespace torve
