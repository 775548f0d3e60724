#include "figure/request/drawn_figure.hpp"

#include <charconv>

namespace torve {

namespace {

std::optional<int> take_number(std::string_view& line) {
  int number = 0;
  const auto [stop, error] = std::from_chars(line.data(), line.data() + line.size(), number);
  if (error != std::errc()) return std::nullopt;
  line.remove_prefix(static_cast<std::size_t>(stop - line.data()));
  if (!line.starts_with(' ')) return std::nullopt;
  line.remove_prefix(1);
  return number;
}

}  // namespace

int figure_status(const DrawnFigure& figure) {
  return figure.outcome.is_done() ? figure_drawn : figure_failed;
}

std::string figure_output(const DrawnFigure& figure) {
  if (figure.outcome.is_done()) return figure.bytes;
  return std::to_string(static_cast<int>(figure.outcome.cause)) + " " +
         std::to_string(figure.outcome.error) + " " + figure.outcome.name + '\0' +
         figure.outcome.reason;
}

std::optional<DrawnFigure> drawn_figure_of(int status, std::string_view output) {
  DrawnFigure figure;
  if (status == figure_drawn) {
    figure.bytes = output;
    return figure;
  }
  const auto cause = take_number(output);
  const auto error = take_number(output);
  const bool is_known = cause && error && *cause > 0 && *cause <= static_cast<int>(last_cause);
  if (status != figure_failed || !is_known) return std::nullopt;
  figure.outcome.cause = static_cast<Cause>(*cause);
  figure.outcome.error = *error;
  const std::size_t end_of_name = output.find('\0');
  figure.outcome.name = output.substr(0, end_of_name);
  if (end_of_name != std::string_view::npos) figure.outcome.reason = output.substr(end_of_name + 1);
  return figure;
}

}  // namespace torve
