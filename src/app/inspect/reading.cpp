#include "app/inspect/reading.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "app/inspect/overlay.hpp"
#include "app/inspect/part_file.hpp"
#include "app/inspect/readout.hpp"
#include "app/inspect/views.hpp"
#include "app/plot/view_drawing.hpp"
#include "app/plot/view_geometry.hpp"
#include "app/tools/pane_views.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/strip.hpp"
#include "display/input.hpp"

namespace torve {

namespace {

constexpr int cross_colour = 4;
constexpr int mark_colour = 2;
constexpr int arm = 8;  // pixels of the cross, from its middle

Overlay cross, mark_line;
std::optional<Reading> reading_now, mark;
std::optional<std::string> said_before;  // by the strip

// The part of a pane that curves are drawn in.
Rect curve_area(int pane) {
  const Rect band = band_of(pane);
  return {first_curve_column, band.y1 + 12, last_curve_column + 1, band.y1 + 155};
}

void show_cross(int pane, const PointPlace& place) {
  const Rect area = curve_area(pane);
  const auto [x, y] = place;
  const std::array<OverlayLine, 2> lines = {{
      {intersection({x - arm, y, x + arm + 1, y + 1}, area), cross_colour},
      {intersection({x, y - arm, x + 1, y + arm + 1}, area), cross_colour},
  }};
  cross.show(lines);
}

// Shown as long as points are read, in the pane where it was set.
void show_mark_line() {
  if (mark_line.is_shown() || !mark) return;
  const PaneView& view = shown_view(mark->pane);
  if (view.kind != mark->kind || view.file != mark->file) return;
  const Rect area = curve_area(mark->pane);
  const int x = static_cast<int>(column_of(view, static_cast<double>(mark->index)));
  const std::array<OverlayLine, 1> line = {
      {{intersection({x, area.y1, x + 1, area.y2}, area), mark_colour}}};
  if (!line[0].rect.empty()) mark_line.show(line);
}

// A long name gives up its beginning where the line would not fit.
std::string fitting_text(Reading reading) {
  const std::string name = reading.file;
  std::string text = text_of(reading, mark);
  for (std::size_t cut = 2; cut < name.size() && !fits_strip(text); ++cut) {
    reading.file = name.substr(cut);
    reading.file.insert(0, 1, '~');
    text = text_of(reading, mark);
  }
  return text;
}

void say(const std::string& text) {
  if (!said_before) said_before = strip_text();
  say_in_strip(text);
}

bool mark_is_in_reach() {
  return mark && reading_now && mark->pane == reading_now->pane && mark->kind == PaneKind::signal &&
         reading_now->kind == PaneKind::signal && mark->file == reading_now->file;
}

}  // namespace

void show_reading(int pane, int x, int y) {
  ViewPoints loaded;
  const Outcome read = load_points(shown_view(pane), &loaded);
  if (!read.is_done()) {
    take_reading_away();
    if (read.cause == Cause::cancelled) say_outcome(read);
    return;
  }
  const PaneView view = scaled_view(pane, loaded);
  if (!(view.xsc > 0)) return take_reading_away();
  const std::size_t index = nearest_point(view, loaded, pane_row(pane), x, y);
  reading_now = read_point(view, loaded, pane, index);
  cross.clear();
  show_mark_line();
  show_cross(pane, place_of_point(view, loaded, pane_row(pane), index));
  say(fitting_text(*reading_now));
}

bool reading_is_shown() {
  return reading_now.has_value();
}

void take_reading_away() {
  cross.clear();
  mark_line.clear();
  reading_now.reset();
  if (said_before) say_in_strip(*said_before);
  said_before.reset();
}

void keep_mark() {
  if (!reading_now) return;
  mark = reading_now;
  cross.clear();
  mark_line.clear();
}

bool forget_mark() {
  const bool was_kept = mark.has_value();
  mark.reset();
  return was_kept;
}

void copy_line() {
  if (reading_now) {
    offer_text(text_of(*reading_now, mark));
  } else if (!strip_text().empty()) {
    offer_text(strip_text());
  }
}

void write_stretch() {
  if (!mark_is_in_reach()) {
    say("Set a mark (m) in this signal first; w writes from there to the pointer.");
    return;
  }
  ViewPoints loaded;
  const Outcome read = load_points(shown_view(reading_now->pane), &loaded);
  if (!read.is_done()) return say_outcome(read);
  const auto [first, last] = std::minmax(mark->index, reading_now->index);
  const auto& values = loaded.file->values;
  const std::size_t end = std::min(last + 1, values.size());
  if (first >= end) return;
  const Outcome written = write_part(std::span(values).subspan(first, end - first));
  if (!written.is_done()) return say_outcome(written);
  say(written.name + ": " + std::to_string(end - first) + " samples of " + reading_now->file +
      " from " + std::to_string(first) + " on");
}

}  // namespace torve
