#include "app/inspect/views.hpp"

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "app/plot/view_geometry.hpp"
#include "app/plot/view_points.hpp"
#include "app/tools/pane_views.hpp"
#include "dialogs/outcomes.hpp"

namespace torve {

namespace {

constexpr std::uint32_t one_gesture = 700;  // milliseconds
constexpr std::size_t most_remembered = 100;

struct PaneHistory {
  PaneView told;                 // what a line drew
  std::vector<PaneView> before;  // the views since, the last one at the end
  ViewChange last_change = nullptr;
  std::uint32_t last_time = 0;
};
std::array<PaneHistory, pane_count> histories;

// The full scale that a line drew a view to, worked out once.
struct KnownScale {
  PaneView view;
  std::weak_ptr<const FileValues> file;
  double full_scale = 0;
};
std::array<KnownScale, pane_count> scales;
bool coupled = false;

PaneHistory& history_of(int pane) {
  PaneHistory& history = histories.at(static_cast<std::size_t>(pane));
  const PaneView& shown = shown_view(pane);
  if (!shown.closer && shown != history.told) history = {shown, {}, nullptr, 0};
  return history;
}

void remember(int pane, ViewChange change, std::uint32_t time) {
  PaneHistory& history = history_of(pane);
  const bool goes_on = change != nullptr && change == history.last_change &&
                       time - history.last_time < one_gesture && !history.before.empty();
  history.last_change = change;
  history.last_time = time;
  if (goes_on) return;
  if (history.before.size() == most_remembered) history.before.erase(history.before.begin());
  history.before.push_back(shown_view(pane));
}

double full_scale_in(int pane, const PaneView& view, const ViewPoints& loaded) {
  if (view.closer) return view.full_scale;
  KnownScale& known = scales.at(static_cast<std::size_t>(pane));
  if (known.view != view || known.file.lock() != loaded.file) {
    known = {view, loaded.file, full_scale_of(view, loaded)};
  }
  return known.full_scale;
}

// A pane's view as a closer one, with the number of points of its file; 0 points when there is
// nothing to look at, which is said.
struct CloserView {
  PaneView view;
  std::size_t points = 0;
};

CloserView look_closer(int pane) {
  const PaneView& shown = shown_view(pane);
  if (shown.kind == PaneKind::nothing) return {};
  ViewPoints loaded;
  const Outcome outcome = load_points(shown, &loaded);
  if (!outcome.is_done()) {
    say_outcome(outcome);
    return {};
  }
  const std::size_t points = loaded.points().size();
  return {closer_view(shown, points, full_scale_in(pane, shown, loaded)), points};
}

void show(int pane, const PaneView& view, ViewChange change, std::uint32_t time) {
  if (view == shown_view(pane)) return;
  remember(pane, change, time);
  const Outcome outcome = show_closer(pane, view);
  if (!outcome.is_done()) say_outcome(outcome);
}

void take_others_along(int pane, const PaneView& before, const PaneView& after, ViewChange change,
                       std::uint32_t time) {
  const bool moves = before.start != after.start || before.xsc != after.xsc;
  if (!coupled || !moves || after.kind != PaneKind::signal) return;
  for (int other = 0; other < pane_count; ++other) {
    if (other == pane || shown_view(other).kind != PaneKind::signal) continue;
    const CloserView closer = look_closer(other);
    if (closer.points == 0) continue;
    show(other, followed(closer.view, closer.points, before, after), change, time);
  }
}

PaneView stretch_shown(const PaneView& view, std::size_t, int, double) {
  return view;
}

// A line that draws a file which is not there says so in a pane; here the pane stays.
void show_again(int pane, const PaneView& view) {
  ViewPoints loaded;
  Outcome outcome = load_points(view, &loaded);
  if (outcome.is_done()) {
    outcome = view.closer ? show_closer(pane, view) : show_as_told(pane, view);
  }
  if (!outcome.is_done()) say_outcome(outcome);
}

template <typename Act>
void for_coupled_panes(int pane, Act act) {
  for (int other = 0; other < pane_count; ++other) {
    const bool goes_along = coupled && shown_view(other).kind == PaneKind::signal &&
                            shown_view(pane).kind == PaneKind::signal;
    if (other == pane || goes_along) act(other);
  }
}

}  // namespace

void change_view(int pane, ViewChange change, int column, double amount, std::uint32_t time) {
  const CloserView closer = look_closer(pane);
  if (closer.points == 0) return;
  const PaneView after = change(closer.view, closer.points, column, amount);
  if (after == closer.view) return;
  show(pane, after, change, time);
  take_others_along(pane, closer.view, after, change, time);
}

void show_stretch(int pane, double first, double last, std::uint32_t time) {
  const CloserView closer = look_closer(pane);
  if (closer.points == 0) return;
  const PaneView after = fitted(closer.view, closer.points, first, last);
  show(pane, after, stretch_shown, time);
  take_others_along(pane, closer.view, after, stretch_shown, time);
}

PaneView scaled_view(int pane, const ViewPoints& loaded) {
  PaneView view = shown_view(pane);
  view.full_scale = full_scale_in(pane, view, loaded);
  return view;
}

void toggle_decibels(int pane) {
  if (shown_view(pane).kind != PaneKind::spectrum) return;
  CloserView closer = look_closer(pane);
  if (closer.points == 0) return;
  closer.view.decibels = !closer.view.decibels;
  show(pane, closer.view, nullptr, 0);
}

void show_view_before(int pane) {
  for_coupled_panes(pane, [](int other) {
    PaneHistory& history = history_of(other);
    // A line that was run again shows what the first change began with.
    while (!history.before.empty() && history.before.back() == shown_view(other))
      history.before.pop_back();
    if (history.before.empty()) return;
    const PaneView view = std::move(history.before.back());
    history.before.pop_back();
    history.last_change = nullptr;
    show_again(other, view);
  });
}

void show_told_view(int pane) {
  for_coupled_panes(pane, [](int other) {
    if (!shown_view(other).closer) return;
    remember(other, nullptr, 0);
    show_again(other, history_of(other).told);
  });
}

bool toggle_coupling() {
  coupled = !coupled;
  return coupled;
}

void reset_views() {
  histories = {};
  coupled = false;
}

}  // namespace torve
