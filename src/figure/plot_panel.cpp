#include "figure/plot_panel.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "figure/ticks.hpp"

namespace torve {

namespace {

constexpr double number_size = 7.5;
constexpr double title_size = 8.5;
constexpr double tick_length = 3.5;
constexpr Ink frame_ink = {.colour = 0x000000, .width = 0.6};
constexpr Ink zero_ink = {.colour = 0xB0B0B0, .width = 0.4};
constexpr Ink curve_ink = {.colour = 0x153E75, .width = 0.6};
constexpr double baseline = 0.36;  // from the middle of a number down, in parts of its size

struct ValueRange {
  double low = 0, high = 0;
};

// From values or places to positions on the page.
struct Scale {
  double from, to;        // values
  double at_from, at_to;  // positions
  [[nodiscard]] double at(double value) const {
    return at_from + (value - from) / (to - from) * (at_to - at_from);
  }
};

// So that the outermost points stand clear of the frame.
ValueRange padded(const ValueRange& range, bool is_level) {
  constexpr double part = 0.04;
  const double room = (range.high - range.low) * part;
  return {range.low < 0 && !is_level ? range.low - room : range.low, range.high + room};
}

ValueRange value_range(const FigureInput& input, const SeenPoints& seen) {
  const bool is_signal = input.source == FigureSource::signal;
  if (input.decibels) return padded({seen.low / input.ysc.value_or(1), 0}, true);
  ValueRange range = {seen.low, seen.high};
  if (input.ysc || input.full) {
    const double high = input.full.value_or(seen.largest) / input.ysc.value_or(1);
    range = {is_signal ? -high : 0, high};
  }
  if (!(range.low < range.high)) range = {is_signal ? -1.0 : 0.0, 1.0};
  return padded(range, false);
}

const char* value_title(const FigureInput& input) {
  if (input.source == FigureSource::signal) return "amplitude";
  return input.decibels ? "power (dB)" : "power";
}

// --- x ------------------------------------------------------------------------------------------

struct AxisUnit {
  const char* title;
  double size;  // in seconds or hertz
};

AxisUnit axis_unit(FigureSource source, const AxisRange& range) {
  constexpr double least_in_seconds = 1;
  if (source == FigureSource::spectrum) return {"frequency (Hz)", 1};
  if (range.right - range.left < least_in_seconds) return {"time (ms)", 1e-3};
  return {"time (s)", 1};
}

// As many as can be read beside each other.
Ticks ticks_along(const AxisRange& range, double width) {
  constexpr double closest = 34;  // points from one to the next
  constexpr double gap = 8;
  for (int most = std::max(2, static_cast<int>(width / closest));; --most) {
    Ticks ticks = round_ticks(range.left, range.right, most);
    double widest_text = 0;
    for (const Tick& tick : ticks.ticks)
      widest_text = std::max(widest_text, widest(tick.text, number_size));
    const double distance = ticks.ticks.size() < 2 ? width
                                                   : (ticks.ticks[1].value - ticks.ticks[0].value) /
                                                         (range.right - range.left) * width;
    if (most <= 1 || distance >= widest_text + gap) return ticks;
  }
}

void draw_x_axis(Drawing& drawing, FigureSource source, const PlotPanel& panel, Lines& marks) {
  const AxisUnit unit = axis_unit(source, panel.range);
  const AxisRange range = {panel.range.left / unit.size, panel.range.right / unit.size};
  const Box& frame = panel.frame;
  const Scale scale = {range.left, range.right, frame.x1, frame.x2};
  for (const Tick& tick : ticks_along(range, frame.width()).ticks) {
    const double x = scale.at(tick.value);
    marks.lines.push_back({{x, frame.y2}, {x, frame.y2 - tick_length}});
    marks.lines.push_back({{x, frame.y1}, {x, frame.y1 + tick_length}});
    const double half = widest(tick.text, number_size) / 2;
    if (!panel.has_axis || x + half > drawing.width) continue;
    drawing.items.push_back(Text{.at = {x, frame.y2 + number_size + 3},
                                 .text = tick.text,
                                 .size = number_size,
                                 .anchor = Anchor::middle});
  }
  if (!panel.has_axis) return;
  drawing.items.push_back(fitted({.at = {(frame.x1 + frame.x2) / 2, frame.y2 + 23},
                                  .text = unit.title,
                                  .size = title_size,
                                  .anchor = Anchor::middle},
                                 frame.width()));
}

// --- y ------------------------------------------------------------------------------------------

void draw_y_axis(Drawing& drawing, const FigureInput& input, const Box& frame, const Scale& scale,
                 Lines& marks) {
  constexpr double distance = 20;  // points from one number to the next
  constexpr double title_room = 14;
  const int most = std::max(2, static_cast<int>(frame.height() / distance));
  const Ticks ticks = short_ticks(scale.from, scale.to, most);
  for (const Tick& tick : ticks.ticks) {
    const double y = scale.at(tick.value);
    marks.lines.push_back({{frame.x1, y}, {frame.x1 + tick_length, y}});
    marks.lines.push_back({{frame.x2, y}, {frame.x2 - tick_length, y}});
    drawing.items.push_back(fitted({.at = {frame.x1 - 4, y + number_size * baseline},
                                    .text = tick.text,
                                    .size = number_size,
                                    .anchor = Anchor::right},
                                   room_left - 4 - title_room));
  }
  if (ticks.exponent != 0) {
    drawing.items.push_back(Text{
        .at = {frame.x1, frame.y1 - 4},
        .text = "\u00D710",
        .size = number_size,
        .raised = (ticks.exponent < 0 ? "\u2212" : "") + std::to_string(std::abs(ticks.exponent))});
  }
  drawing.items.push_back(fitted({.at = {title_room - 2, (frame.y1 + frame.y2) / 2},
                                  .text = value_title(input),
                                  .size = title_size,
                                  .anchor = Anchor::middle,
                                  .upward = true},
                                 frame.height() + room_above));
}

// --- the curve ----------------------------------------------------------------------------------

// In pieces: readers of a thousand strokes that are one item take a hundred times as long for them.
void draw_columns(Drawing& drawing, const SeenPoints& seen, const Scale& up, const Box& frame) {
  constexpr std::size_t strokes_of_a_piece = 50;
  const Scale across = {0, static_cast<double>(seen.columns.size()), frame.x1, frame.x2};
  Lines strokes = {.ink = curve_ink, .lines = {}};
  for (std::size_t i = 0; i < seen.columns.size(); ++i) {
    const ColumnEnds& ends = seen.columns[i];
    const double x = across.at(static_cast<double>(i) + 0.5);
    const double low = up.at(ends.low);
    const double high = up.at(ends.high);
    if (ends.is_empty || high > frame.y2 || low < frame.y1) continue;
    strokes.lines.push_back({{x, std::max(high, frame.y1)}, {x, std::min(low, frame.y2)}});
    if (strokes.lines.size() < strokes_of_a_piece) continue;
    drawing.items.emplace_back(strokes);
    strokes.lines.clear();
  }
  if (!strokes.lines.empty()) drawing.items.emplace_back(strokes);
}

Curve curve_line(const SeenPoints& seen, const Scale& across, const Scale& up, const Box& frame) {
  Curve curve = {.ink = curve_ink, .points = {}, .clip = frame};
  for (const Point& point : seen.points)
    curve.points.push_back({across.at(point.x), up.at(point.y)});
  if (curve.points.size() == 1) curve.points.push_back(curve.points.front());  // a dot
  return curve;
}

void draw_curve(Drawing& drawing, const PlotPanel& panel, const SeenPoints& seen, const Scale& up) {
  const Box& frame = panel.frame;
  if (seen.columns.empty()) {
    const Scale across = {panel.range.left, panel.range.right, frame.x1, frame.x2};
    drawing.items.emplace_back(curve_line(seen, across, up, frame));
  } else {
    draw_columns(drawing, seen, up, frame);
  }
}

void add_box(Lines& lines, const Box& box) {
  const Point corners[] = {{box.x1, box.y1}, {box.x2, box.y1}, {box.x2, box.y2}, {box.x1, box.y2}};
  for (std::size_t i = 0; i < 4; ++i)
    lines.lines.push_back({corners[i], corners[(i + 1) % 4]});
}

}  // namespace

void draw_caption(Drawing& drawing, const Box& frame, const std::string& caption) {
  constexpr double room_of_power = 30;
  if (caption.empty()) return;
  drawing.items.push_back(fitted({.at = {frame.x2, frame.y1 - 4},
                                  .text = caption,
                                  .size = number_size,
                                  .anchor = Anchor::right},
                                 frame.width() - room_of_power));
}

void draw_plot_panel(Drawing& drawing, const FigureInput& input, const PlotPanel& panel,
                     const SeenPoints& seen) {
  const ValueRange values = value_range(input, seen);
  const Scale up = {values.low, values.high, panel.frame.y2, panel.frame.y1};
  if (values.low < 0 && values.high > 0 && !input.decibels) {
    const double y = up.at(0);
    drawing.items.push_back(Lines{zero_ink, {{{panel.frame.x1, y}, {panel.frame.x2, y}}}});
  }
  draw_curve(drawing, panel, seen, up);
  Lines marks = {.ink = frame_ink, .lines = {}};
  add_box(marks, panel.frame);
  draw_x_axis(drawing, input.source, panel, marks);
  draw_y_axis(drawing, input, panel.frame, up, marks);
  drawing.items.emplace_back(std::move(marks));
  draw_caption(drawing, panel.frame, panel.caption);
}

}  // namespace torve
