#include "batch/figure.hpp"

#include <optional>

#include "batch/status.hpp"
#include "batch/streams.hpp"
#include "batch/warnings.hpp"
#include "figure/request/figure_request.hpp"
#include "figure/request/make_figure.hpp"

namespace torve {

namespace {

// The output and its inputs, with the options of a figure; nothing where one of them says nothing.
std::optional<FigureRequest> figure_request(const Request& request) {
  const auto format = request.format.empty() ? figure_format_of(request.words[0])
                                             : figure_format_named(request.format);
  FigureRequest figure = {.format = format.value_or(FigureFormat::pdf),
                          .size = figure_size_of(request.size),
                          .title = request.title};
  if (!format || (!figure.size && !request.size.empty())) return std::nullopt;
  for (const std::string& word : Words(request.words).subspan(1)) {
    const auto input = figure_input_of(word);
    if (!input || names_stream(input->name)) return std::nullopt;
    figure.inputs.push_back(*input);
  }
  return figure_size_fits(figure) ? std::optional(figure) : std::nullopt;
}

}  // namespace

int run_figure(const Request& request) {
  constexpr int lines_looked_at = 1000;  // of a file that may be hours long
  const auto figure = figure_request(request);
  if (!figure) return exit_usage;
  OutputName output(request.words[0]);
  if (!output.outcome().is_done()) return status_of(request, output.outcome());
  for (const FigureInput& input : figure->inputs) {
    if (input.source == FigureSource::signal)
      warn_about_signal(input.name, {.end = lines_looked_at});
  }
  return status_of(request, make_figure(*figure, output.name()), output);
}

}  // namespace torve
