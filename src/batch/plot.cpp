#include "batch/plot.hpp"

#include <utility>

#include "app/plot/plot_panes.hpp"
#include "base/files.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "draw/rectangles.hpp"
#include "eps/eps_stream.hpp"
#include "gif/gif_writer.hpp"
#include "text/fonts.hpp"

namespace torve {

namespace {

// A canvas as the workbench starts with, in memory.
Outcome prepare_canvas() {
  if (!create_screen_image()) return {.cause = Cause::no_memory};
  allocate_colours(allocate_true_colour);
  set_xcolor2();
  reset_screen_state();
  clearwin(0, 0, screen_width, screen_height, white_colour);
  defaultfont = menu_font;
  const bool are_loaded = init_font(menu_font) == 0 && init_font2(label_font) == 0;
  return {.cause = are_loaded ? Cause::done : Cause::unreadable,
          .name = data_directory(DataKind::font)};
}

Outcome draw(const PlotRequest& request, int target) {
  const PlotSettings settings = {.target = target,
                                 .step = request.step,
                                 .start = request.start,
                                 .xsc = request.xsc,
                                 .ysc = request.ysc,
                                 .yoff = request.pane * pane_pitch,
                                 .decibels = request.decibels};
  return request.spectrum ? plot_spectrum_file(request.input, settings, request.samples)
                          : plot_signal_file(request.input, settings);
}

Outcome write_pane_eps(const PlotRequest& request, const std::string& output) {
  FilePtr template_file = open_eps(output, "psexampl.dat");
  if (!template_file) return {.cause = Cause::not_created, .name = output};
  Outcome drawn = draw(request, target_eps);
  if (drawn.is_done()) return finish_eps(std::move(template_file));
  abandon_eps();
  return drawn;
}

Outcome write_pane_gif(const PlotRequest& request, const std::string& output) {
  Outcome drawn = draw(request, target_screen);
  if (!drawn.is_done()) return drawn;
  const int top = request.pane * pane_pitch;
  return write_gif(output, {0, top, screen_width, top + pane_rows + 1});
}

}  // namespace

Outcome plot_to_file(const PlotRequest& request, const std::string& output, PictureFormat format) {
  Outcome prepared = prepare_canvas();
  if (!prepared.is_done()) return prepared;
  // Asked for before the output is touched.
  if (!open_regular_file(request.input, "r")) return input_failure(request.input);
  return format == PictureFormat::eps ? write_pane_eps(request, output)
                                      : write_pane_gif(request, output);
}

}  // namespace torve
