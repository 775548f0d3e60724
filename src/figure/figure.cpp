#include "figure/figure.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "figure/diagram_panel.hpp"
#include "figure/plot_panel.hpp"
#include "figure/points.hpp"

namespace torve {

namespace {

constexpr double page_width = 480;  // points: the width of a page's text
constexpr double margin = 6;
constexpr double title_size = 10;
constexpr double room_of_title = 18;
constexpr double lone_plot = 200;  // height of a frame
constexpr double plot = 110;

struct Panel {
  FigureInput input;
  PointPlaces places = {};
  KeptDiagram diagram = {};
  bool has_axis = false;
  Box frame = {};
};

bool is_diagram(const Panel& panel) {
  return panel.input.source == FigureSource::diagram;
}

Outcome open_panels(const FigureRequest& request, std::vector<Panel>* panels) {
  for (const FigureInput& input : request.inputs) {
    Panel& panel = panels->emplace_back();
    panel.input = input;
    Outcome opened = is_diagram(panel) ? read_diagram_to_draw(input.name, &panel.diagram)
                                       : find_places(input, &panel.places);
    if (!opened.is_done()) return opened;
  }
  for (std::size_t i = 0; i < panels->size(); ++i) {
    const FigureSource source = (*panels)[i].input.source;
    const bool is_last = i + 1 == panels->size() || (*panels)[i + 1].input.source != source;
    (*panels)[i].has_axis = source != FigureSource::diagram && is_last;
  }
  return {};
}

AxisRange shared_range(const std::vector<Panel>& panels, FigureSource source) {
  std::optional<AxisRange> shared;
  for (const Panel& panel : panels) {
    if (panel.input.source != source) continue;
    const AxisRange& own = panel.places.range;
    shared = shared
                 ? AxisRange{std::min(shared->left, own.left), std::max(shared->right, own.right)}
                 : own;
  }
  return shared.value_or(AxisRange{});
}

// --- where panels lie ---------------------------------------------------------------------------

// The name of a lone input gives way to a title; a lone diagram has none.
bool has_caption(const FigureRequest& request) {
  const bool is_plot = request.inputs.front().source != FigureSource::diagram;
  return request.inputs.size() > 1 || (request.title.empty() && is_plot);
}

double room_above_frame(const Panel& panel, const FigureRequest& request) {
  return is_diagram(panel) && !has_caption(request) ? 0 : room_above;
}

double room_below_frame(const Panel& panel) {
  return panel.has_axis ? room_of_axis : room_below;
}

double room_around(const std::vector<Panel>& panels, const FigureRequest& request) {
  double room = 2 * margin + (request.title.empty() ? 0 : room_of_title);
  for (const Panel& panel : panels)
    room += room_above_frame(panel, request) + room_below_frame(panel);
  return room;
}

// A diagram is as large as on the screen, or as wide as the page.
double diagram_scale(const Box& box) {
  return std::min(points_a_pixel, (page_width - 2 * margin) / std::max(box.width(), 1.0));
}

double natural_height(const Panel& panel, bool is_lone) {
  if (!is_diagram(panel)) return is_lone ? lone_plot : plot;
  const Box box = diagram_box(panel.diagram);
  return std::max(box.height() * diagram_scale(box), title_size);
}

double natural_width(const std::vector<Panel>& panels, const std::string& title) {
  if (panels.size() > 1 || !is_diagram(panels.front())) return page_width;
  const Box box = diagram_box(panels.front().diagram);
  const double width = std::max(box.width() * diagram_scale(box), widest(title, title_size));
  return std::min(page_width, std::ceil(width / 2 + margin) * 2);
}

void set_size(Drawing& drawing, const std::vector<Panel>& panels, const FigureRequest& request) {
  if (request.size) {
    const double scale = request.format == FigureFormat::png ? png_scale : 1;
    drawing.width = request.size->width / scale;
    drawing.height = request.size->height / scale;
    return;
  }
  drawing.width = natural_width(panels, drawing.title);
  drawing.height = room_around(panels, request);
  for (const Panel& panel : panels)
    drawing.height += natural_height(panel, panels.size() == 1);
  drawing.height = std::ceil(drawing.height / 2) * 2;  // whole pixels in any format
}

// To whole pixels of a PNG.
double whole(double position) {
  return std::round(position * png_scale) / png_scale;
}

void place_panels(const Drawing& drawing, std::vector<Panel>& panels,
                  const FigureRequest& request) {
  const bool is_lone = panels.size() == 1;
  double natural = 0;
  for (const Panel& panel : panels)
    natural += natural_height(panel, is_lone);
  const double stretch = (drawing.height - room_around(panels, request)) / natural;
  double y = margin + (request.title.empty() ? 0 : room_of_title);
  for (Panel& panel : panels) {
    y += room_above_frame(panel, request);
    const double height = natural_height(panel, is_lone) * stretch;
    const double left = is_diagram(panel) ? margin : room_left;
    const double right = is_diagram(panel) ? margin : room_right;
    panel.frame = {left, whole(y), whole(drawing.width - right), whole(y + height)};
    y += height + room_below_frame(panel);
  }
}

// --- what they show -----------------------------------------------------------------------------

// A column is a pixel of a PNG; elsewhere there are as many as a page is printed with, and no more
// than keep the file small.
int column_count(const Box& frame, FigureFormat format) {
  constexpr double column = 0.3;  // points
  constexpr double most = 1600;
  if (format == FigureFormat::png) return static_cast<int>(std::lround(frame.width() * png_scale));
  return static_cast<int>(std::min(most, std::floor(frame.width() / column)));
}

std::string caption_of(const Panel& panel, const FigureRequest& request) {
  const std::string& name = panel.input.name;
  return has_caption(request) ? text_of_bytes(name.substr(name.rfind('/') + 1)) : std::string();
}

Outcome draw_panel(Drawing& drawing, const Panel& panel, const AxisRange& range,
                   const FigureRequest& request) {
  SeenPoints seen;
  Outcome read = read_points(panel.input, panel.places, range,
                             column_count(panel.frame, request.format), &seen);
  if (!read.is_done()) return read;
  if (panel.input.decibels) use_decibels(seen);
  draw_plot_panel(drawing, panel.input,
                  {.frame = panel.frame,
                   .range = range,
                   .has_axis = panel.has_axis,
                   .caption = caption_of(panel, request)},
                  seen);
  return read;
}

void draw_title(Drawing& drawing) {
  drawing.items.push_back(fitted({.at = {drawing.width / 2, margin + title_size},
                                  .text = drawing.title,
                                  .size = title_size,
                                  .anchor = Anchor::middle},
                                 drawing.width - 2 * margin));
}

}  // namespace

Outcome lay_out_figure(const FigureRequest& request, Drawing* drawing) {
  std::vector<Panel> panels;
  Outcome opened = open_panels(request, &panels);
  if (!opened.is_done()) return opened;
  drawing->title = text_of_bytes(request.title);
  set_size(*drawing, panels, request);
  place_panels(*drawing, panels, request);
  if (!drawing->title.empty()) draw_title(*drawing);
  for (const Panel& panel : panels) {
    if (is_diagram(panel)) {
      draw_diagram_panel(*drawing, panel.diagram, panel.frame);
      draw_caption(*drawing, panel.frame, caption_of(panel, request));
      continue;
    }
    Outcome drawn = draw_panel(*drawing, panel, shared_range(panels, panel.input.source), request);
    if (!drawn.is_done()) return drawn;
  }
  return {};
}

}  // namespace torve
