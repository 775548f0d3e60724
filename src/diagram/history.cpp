#include "diagram/history.hpp"

#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include "diagram/editor.hpp"
#include "diagram/figure_menu.hpp"
#include "diagram/model/kept_diagram.hpp"
#include "diagram/properties/property_menu.hpp"
#include "diagram/restore.hpp"
#include "display/graph.hpp"

namespace torve {

namespace {

using Steps = std::deque<SharedDiagram>;  // the nearest one last

constexpr std::size_t most_kept =
    4'000'000;  // figures in all steps: 64 MB, and what they differ in

std::optional<SharedDiagram> prepared;
bool noted = false;  // something has changed since
Steps past, future;
SharedDiagram saved;
bool goes_on = false;    // the next placing belongs to the last change
bool may_differ = true;  // from what the window's title says

// The oldest steps go when there are too many; the last one stays.
void forget_what_is_too_much() {
  std::size_t kept = 0;
  for (const SharedDiagram& step : past)
    kept += step.size();
  for (; kept > most_kept && past.size() > 1; past.pop_front())
    kept -= past.front().size();
}

// The change that was prepared has come to its end, if it was one.
void end_change() {
  if (noted && prepared && !have_same_figures(*prepared, share_diagram())) {
    past.push_back(std::move(*prepared));
    forget_what_is_too_much();
    future.clear();
  }
  prepared.reset();
  noted = false;
}

// A figure in the hand is let go: it would jump to the next press.
void let_go() {
  if (figure_is_in_hand() || is_typing()) vobjmode = mode_pointer;
  if (cvobj == nullptr && vobjmode != mode_pointer) vobjmode = mode_idle;
}

int go(Steps& from, Steps& to) {
  if (from.empty()) return 0;
  close_figure_menu();  // its figure may go
  const ShownProperties shown;
  to.push_back(share_diagram());
  const SharedDiagram step = std::move(from.back());
  from.pop_back();
  std::vector<const KeptFigure*> figures;
  figures.reserve(step.size());
  for (const auto& figure : step)
    figures.push_back(figure.get());
  restore_diagram(figures);
  shown.follow();
  goes_on = false;
  may_differ = true;
  let_go();
  return 0;
}

}  // namespace

void prepare_change() {
  end_change();
  prepared = share_diagram();
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
  noted = true;
  may_differ = true;
}

int undo_ope() {
  end_change();
  return go(past, future);
}

int redo_ope() {
  end_change();
  return go(future, past);
}

bool diagram_is_unsaved() {
  return !have_same_figures(saved, share_diagram());
}

void diagram_was_saved() {
  saved = share_diagram();
  may_differ = true;
}

void show_unsaved_mark() {
  if (!may_differ) return;
  may_differ = false;
  mark_window_unsaved(diagram_is_unsaved());
}

void reset_history() {
  prepared.reset();
  noted = false;
  past.clear();
  future.clear();
  goes_on = false;
  diagram_was_saved();
}

}  // namespace torve
