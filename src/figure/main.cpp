// torve-figure: draws what its words ask for (figure_request.hpp) and writes the picture, or why
// there is none (drawn_figure.hpp), to standard output. torve and torve-batch run it.

#include <algorithm>
#include <cstdio>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/console.hpp"
#include "figure/figure.hpp"
#include "figure/formats.hpp"
#include "figure/request/drawn_figure.hpp"
#include "figure/request/figure_request.hpp"

namespace {

using namespace torve;

std::optional<std::string> picture_of(const Drawing& drawing, FigureFormat format) {
  if (format == FigureFormat::svg) return svg_of(drawing);
  return format == FigureFormat::pdf ? pdf_of(drawing) : png_of(drawing, png_scale);
}

DrawnFigure draw(const FigureRequest& request) try {
  Drawing drawing;
  Outcome laid_out = lay_out_figure(request, &drawing);
  if (!laid_out.is_done()) return {.outcome = laid_out};
  auto picture = picture_of(drawing, request.format);
  if (!picture) return {.outcome = {.cause = Cause::no_memory}};
  return {.bytes = std::move(*picture)};
} catch (const std::bad_alloc&) {
  return {.outcome = {.cause = Cause::no_memory}};
}

}  // namespace

int main(int argc, char** argv) {
  set_up_console();
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  const auto request = figure_request_of(words);
  if (!request) {
    std::fputs("torve-figure is run by torve and torve-batch (see torve-batch --help)\n", stderr);
    return figure_misused;
  }
  const DrawnFigure figure = draw(*request);
  const std::string output = figure_output(figure);
  const bool is_written = std::fwrite(output.data(), 1, output.size(), stdout) == output.size() &&
                          std::fflush(stdout) == 0;
  return is_written ? figure_status(figure) : figure_failed;
}
