#include "diagram/history.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/labels.hpp"
#include "display/screen_state.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

// A figure without what belongs to the canvas and the windows. Labels are named by serial number.
struct KeptFigure {
  Vobj record;
  int label = 0;
};
using KeptDiagram = std::vector<KeptFigure>;  // first to last

std::optional<KeptDiagram> prepared;
std::optional<KeptDiagram> before_last_change;
bool unsaved = false;

KeptDiagram kept_diagram() {
  KeptDiagram kept;
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (figure->phase == 0) continue;
    KeptFigure& copy = kept.emplace_back();
    copy.record = *figure;
    copy.record.saved.clear();
    copy.label = figure->label != nullptr ? figure->label->serial : 0;
  }
  return kept;
}

bool is_in(const KeptDiagram& kept, int serial) {
  return std::any_of(kept.begin(), kept.end(),
                     [serial](const KeptFigure& figure) { return figure.record.serial == serial; });
}

template <typename Do>
void for_new_figures(const KeptDiagram& kept, Do what) {
  for (Vobj* figure = firstvobj; figure != nullptr;) {
    Vobj* next = figure->next;
    if (figure->phase != 0 && !is_in(kept, figure->serial)) what(figure);
    figure = next;
  }
}

// The figure as it was, at the end of the list.
void bring_back(const KeptFigure& kept) {
  Vobj* figure = figure_of(kept.record.serial);
  if (figure == nullptr) {
    figure = create_vector_obj(kept.record.kind);
    if (figure == nullptr) return;
  } else {
    unlink_vobj(figure);
    link_last_vobj(figure);
  }
  Vobj record = kept.record;
  record.next = figure->next;
  record.prev = figure->prev;
  record.menu_id = figure->menu_id;
  record.saved = std::move(figure->saved);
  *figure = std::move(record);
}

void restore(const KeptDiagram& kept) {
  for_new_figures(kept, remove_vobj);
  for (const KeptFigure& figure : kept)
    bring_back(figure);
  for (const KeptFigure& figure : kept) {
    if (Vobj* owner = figure_of(figure.record.serial)) owner->label = figure_of(figure.label);
  }
}

// A figure in the hand is let go: it would jump to the next press.
void let_go() {
  const bool holds = vobjmode != mode_idle && vobjmode <= mode_armed;
  if (holds || vobjmode == mode_moving) vobjmode = mode_pointer;
  if (cvobj == nullptr && vobjmode != mode_pointer) vobjmode = mode_idle;
}

}  // namespace

void prepare_change() {
  prepared = kept_diagram();
}

void note_change() {
  if (prepared) before_last_change = std::move(prepared);
  prepared.reset();
  unsaved = true;
}

int undo_ope() {
  if (!before_last_change) return 0;
  const KeptDiagram kept = std::move(*before_last_change);
  before_last_change.reset();
  prepared.reset();
  for_new_figures(kept, close_property_menu);
  {
    const CanvasPaint beneath_windows({xxmin, yymin, xxmax, yymax}, PaintOn::figures);
    lift_figures();
    restore(kept);
    lay_figures();
  }
  unsaved = true;
  let_go();
  return 0;
}

bool diagram_is_unsaved() {
  return unsaved;
}

void diagram_was_saved() {
  unsaved = false;
}

void reset_history() {
  prepared.reset();
  before_last_change.reset();
  unsaved = false;
}

}  // namespace torve
