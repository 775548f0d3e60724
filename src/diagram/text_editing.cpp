#include "diagram/text_editing.hpp"

#include <cstring>
#include <string>

#include "diagram/alignment.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/figure_points.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/model/arcs.hpp"
#include "dialogs/strip.hpp"

namespace torve {

namespace {

constexpr int backspace = 8, carriage_return = 13, line_feed = 10;
constexpr const char* help = "Type the text; Backspace deletes, Return ends.";

// A text is the name of figures whose menus do not write one beside them.
bool is_named_by_text(const FigureRecord& figure) {
  return row_of(figure.kind).holds && row_of(figure.kind).label == nullptr;
}

// Labels that menus write are changed there.
bool can_be_typed(const Vobj& figure) {
  return figure.kind == FigureKind::label && figure.phase != 0 && !is_blank(figure.text) &&
         (figure.owner == nullptr || is_named_by_text(*figure.owner));
}

Vobj* text_at(int x, int y) {
  for (Vobj* figure = lastvobj; figure != nullptr; figure = figure->prev) {
    const bool hit = figure->x1 <= x && x < figure->x2 && figure->y1 <= y && y < figure->y2;
    if (hit && can_be_typed(*figure)) return figure;
  }
  return nullptr;
}

// The text that a press is meant for; null when it is a new one.
Vobj* text_for(const FigureAnchor& point) {
  if (Vobj* text = text_at(point.x, point.y)) return text;
  const Vobj* figure = figure_to_hold(point.x, point.y);
  return figure != nullptr && is_named_by_text(*figure) ? figure->label : nullptr;
}

// Of the armed tool, at its place and with the figure there; nothing is to be seen of it yet.
void place_text(const FigureAnchor& point) {
  Vobj* text = cvobj;
  set_x1_y1(text, point.x, point.y);
  text->phase = phase_draw;
  const Vobj* figure = figure_to_hold(point.x, point.y);
  if (figure == nullptr) return;
  if (is_named_by_text(*figure)) {
    link_label(figure_of(figure->serial), text);
  } else {
    text->from = hold_on(figure, point.x, point.y);
  }
}

void set_text(const std::string& typed) {
  const FigureChange change(cvobj);
  set_label_text(cvobj, typed.c_str());
  if (cvobj->owner != nullptr) store_text(cvobj->owner->name, typed.c_str());
}

// What was begun and has no letter goes.
void end_typing() {
  if (cvobj != nullptr && is_blank(cvobj->text)) cut_figure(cvobj);
  arm_again(FigureKind::label);
}

bool is_letter(int key) {
  constexpr int last_ascii = '~', first_latin = 160, last_latin = 255;
  return (key >= ' ' && key <= last_ascii) || (key >= first_latin && key <= last_latin);
}

}  // namespace

void press_with_text(const PointerEvent& press) {
  if (press.action != PointerAction::press) return;
  if (vobjmode == mode_typing) end_typing();
  if (cvobj == nullptr) return;
  const FigureAnchor point = on_grid(press);
  prepare_change();
  if (Vobj* text = text_for(point)) {
    leave_armed_figure();  // nothing is placed
    raise_figure(text);
  } else {
    place_text(point);
  }
  vobjmode = mode_typing;
  say_in_strip(help);
}

bool type_key(int key) {
  if (vobjmode != mode_typing || cvobj == nullptr) return false;
  std::string typed = cvobj->text;
  if (key == carriage_return || key == line_feed) {
    end_typing();
    return true;
  }
  if (key == backspace) {
    if (!typed.empty()) typed.pop_back();
  } else if (is_letter(key)) {
    if (typed.size() == std::size_t{label_text_length}) return true;
    typed += static_cast<char>(key);
  } else {
    return false;
  }
  set_text(typed);
  return true;
}

}  // namespace torve
