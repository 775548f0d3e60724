#include "diagram/labels.hpp"

#include <cstdint>
#include <cstring>
#include <string>

#include "diagram/drawing.hpp"
#include "diagram/figure_points.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

Vobj* add_label(int x, int y, const char* text, std::uint32_t colour) {
  Vobj* label = create_vector_obj(FigureKind::label);
  if (label == nullptr) return nullptr;
  label->x1 = x;
  label->y1 = y;
  label->colour = colour;
  set_label_text(label, text);
  return label;
}

void show(VectorMode mode, Vobj* label) {
  draw_vobj(mode, label, figure_draw);
  label->phase = phase_on_canvas | phase_draw;
}

void remove_label_of(VectorMode mode, Vobj* owner) {
  Vobj* label = owner->label;
  if (label == nullptr) return;
  cvobj = label;
  pick_up_cvobj();
  draw_vobj(mode, label, figure_erase);
  remove_vobj(label);
  cvobj = owner;
}

}  // namespace

void put_vlabel(VectorMode mode, int x, int y, const char* text) {
  if (cvobj == nullptr) return;
  const std::string kept(text, strnlen(text, label_text_length));
  close_property_menu(cvobj);
  const CanvasPaint beneath_windows(diagram_area(), PaintOn::figures);
  remove_label_of(mode, cvobj);
  if (is_blank(kept.c_str())) return;
  Vobj* label = add_label(x, y, kept.c_str(), cvobj->colour);
  if (label == nullptr) return;
  link_label(cvobj, label);
  show(mode, label);
}

void set_label_text(Vobj* label, const char* text) {
  store_text(label->text, text);
  set_x1_y1(label, label->x1, label->y1);
}

void close_property_menu(Vobj* figure) {
  const int id = property_menu_of(*figure);
  figure->menu_id = 0;
  if (id == 0) return;
  hide_errormsg();
  free_one_wd_object(id);
}

int property_menu_of(const Vobj& figure) {
  const int id = figure.menu_id;
  return is_wd_id(id) && figure_of_menu(id) == &figure ? id : 0;
}

Vobj* figure_of_menu(int id) {
  const WdObject& menu = wd(id);
  if ((menu.kind & ~kind_icon_bit) != kind_popup_menu || menu.kind_word == 0) return nullptr;
  Vobj* figure = figure_of(static_cast<int>(menu.kind_word));
  return figure != nullptr && figure->menu_id == id ? figure : nullptr;
}

}  // namespace torve
