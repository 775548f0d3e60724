#include "diagram/history.hpp"

#include <optional>
#include <utility>

#include "diagram/editor.hpp"
#include "diagram/figure_menu.hpp"
#include "diagram/properties/property_menu.hpp"
#include "diagram/restore.hpp"

namespace torve {

namespace {

std::optional<KeptDiagram> prepared;
std::optional<KeptDiagram> before_last_change;
bool goes_on = false;  // the next placing belongs to the last change
bool unsaved = false;

// A figure in the hand is let go: it would jump to the next press.
void let_go() {
  const bool holds = vobjmode != mode_idle && vobjmode <= mode_armed;
  if (holds || vobjmode == mode_moving) vobjmode = mode_pointer;
  if (cvobj == nullptr && vobjmode != mode_pointer) vobjmode = mode_idle;
}

}  // namespace

void prepare_change() {
  prepared = keep_diagram();
  goes_on = false;
}

void let_change_go_on() {
  goes_on = true;
}

void prepare_placing() {
  if (!goes_on) prepare_change();
  goes_on = false;
}

void note_change() {
  if (prepared) before_last_change = std::move(prepared);
  prepared.reset();
  unsaved = true;
}

int undo_ope() {
  if (!before_last_change) return 0;
  close_figure_menu();  // its figure may go
  const ShownProperties shown;
  const KeptDiagram kept = std::move(*before_last_change);
  reset_history();
  restore_diagram(kept);
  shown.follow();
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
  goes_on = false;
  unsaved = false;
}

}  // namespace torve
