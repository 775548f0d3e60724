#include "app/tools/pane_figure.hpp"

#include <algorithm>

#include "app/signal/sample_file.hpp"
#include "app/tools/batch_line.hpp"
#include "figure/request/make_figure.hpp"

namespace torve {

namespace {

std::optional<double> within(double value, double least, double most) {
  return value >= least && value <= most ? std::optional(value) : std::nullopt;
}

}  // namespace

FigureInput pane_figure_input(const PaneView& view) {
  const bool is_spectrum = view.kind == PaneKind::spectrum;
  FigureInput input = {.name = view.file,
                       .source = is_spectrum ? FigureSource::spectrum : FigureSource::signal,
                       .step = view.step,
                       .xsc = within(view.xsc, least_xsc, most_xsc),
                       .decibels = is_spectrum && view.decibels};
  if (!input.decibels) {
    input.ysc = within(view.ysc, least_scale, most_scale);
    input.full = within(view.full_scale, least_scale, most_scale);
  }
  if (view.closer) {
    input.from = view.start;
  } else {
    input.start = view.start;
    input.samples = std::max(1, sample_budget(view.samples));
  }
  return input;
}

Outcome draw_pane_figure(int pane, const std::string& output, FigureFormat format) {
  const PaneView& view = shown_view(pane);
  if (view.kind == PaneKind::nothing) return {.cause = Cause::nothing_to_draw, .name = output};
  return make_figure({.format = format, .inputs = {pane_figure_input(view)}}, output);
}

std::string pane_figure_command(int pane, const std::string& output) {
  const PaneView& view = shown_view(pane);
  if (view.kind == PaneKind::nothing) return {};
  return batch_line({"figure", output, figure_word(pane_figure_input(view))});
}

}  // namespace torve
