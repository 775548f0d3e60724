#include "batch/plot.hpp"

#include <utility>

#include "app/plot/plot_panes.hpp"
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
bool prepare_canvas() {
  if (!create_screen_image()) return false;
  allocate_colours(allocate_true_colour);
  set_xcolor2();
  reset_screen_state();
  clearwin(0, 0, screen_width, screen_height, white_colour);
  defaultfont = menu_font;
  return init_font(menu_font) == 0 && init_font2(label_font) == 0;
}

int draw(const PlotRequest& request, int target) {
  const int row = request.pane * pane_pitch;
  if (request.input.ends_with(".spe")) {
    return plot_spectrum_anew(request.input.c_str(), row, request.start, request.step, request.xsc,
                              request.ysc, target, request.samples.c_str());
  }
  return plot_anew(request.input.c_str(), row, request.start, request.step, request.xsc,
                   request.ysc, target);
}

int write_eps(const PlotRequest& request, const std::string& output) {
  FilePtr template_file = open_eps(output, "psexampl.dat");
  if (!template_file) return 1;
  const int drawn = draw(request, target_eps);
  const int closed = close_eps(std::move(template_file));
  return drawn != 0 || closed != 0 ? 1 : 0;
}

int write_gif(const PlotRequest& request, const std::string& output) {
  if (draw(request, target_screen) != 0) return 1;
  const int top = request.pane * pane_pitch;
  return writeGIF1(output, 0, top, screen_width - 1, top + pane_rows);
}

}  // namespace

int plot_to_file(const PlotRequest& request, const std::string& output) {
  if (!prepare_canvas()) return 1;
  // Asked for before the output is touched.
  if (!open_regular_file(request.input, "r")) return 1;
  return output.ends_with(".eps") ? write_eps(request, output) : write_gif(request, output);
}

}  // namespace torve
