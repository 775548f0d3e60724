#include "figure/request/figure_request.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

namespace torve {

namespace {

constexpr std::array<std::string_view, 3> format_names = {"pdf", "svg", "png"};
constexpr std::array<std::string_view, 3> source_names = {"signal", "spectrum", "diagram"};
constexpr const char* default_size = "-";

template <typename Enum, std::size_t count>
std::optional<Enum> named(std::string_view word, const std::array<std::string_view, count>& names) {
  const auto found = std::find(names.begin(), names.end(), word);
  if (found == names.end()) return std::nullopt;
  return static_cast<Enum>(found - names.begin());
}

std::string lower_case(std::string_view text) {
  std::string lower(text);
  for (char& character : lower)
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  return lower;
}

std::string ending_of(std::string_view name) {
  const std::size_t point = name.rfind('.');
  return point == std::string_view::npos || point == 0 ? "" : lower_case(name.substr(point + 1));
}

template <typename Number>
std::optional<Number> number_in(std::string_view word) {
  Number number = {};
  const auto [stop, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || stop != word.data() + word.size()) return std::nullopt;
  return number;
}

template <typename Number>
std::string text_of(Number number) {
  std::array<char, 32> text;
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

// --- the options of an input --------------------------------------------------------------------

bool set_whole(int& number, std::string_view text) {
  const auto given = number_in<int>(text);
  number = given.value_or(0);
  return given.has_value();
}

bool set_start(double& start, std::string_view text) {
  const auto given = number_in<double>(text);
  start = given.value_or(0);
  return given && std::fabs(start) <= std::numeric_limits<int>::max();
}

bool set_scale(std::optional<double>& scale, std::string_view text) {
  scale = number_in<double>(text);
  return scale && *scale >= least_scale && *scale <= most_scale;
}

std::string scale_text(const char* key, const std::optional<double>& scale) {
  return scale ? key + text_of(*scale) : std::string();
}

struct InputOption {
  std::string_view key;  // with what separates it from its value
  bool (*set)(FigureInput& input, std::string_view value);
};

constexpr InputOption input_options[] = {
    {"start=", [](FigureInput& input, std::string_view v) { return set_start(input.start, v); }},
    {"from=",
     [](FigureInput& input, std::string_view v) { return set_start(input.from.emplace(), v); }},
    {"step=", [](FigureInput& input, std::string_view v) { return set_whole(input.step, v); }},
    {"xsc=",
     [](FigureInput& input, std::string_view v) {
       return set_scale(input.xsc, v) && *input.xsc >= least_xsc && *input.xsc <= most_xsc;
     }},
    {"ysc=", [](FigureInput& input, std::string_view v) { return set_scale(input.ysc, v); }},
    {"full=", [](FigureInput& input, std::string_view v) { return set_scale(input.full, v); }},
    {"samples=",
     [](FigureInput& input, std::string_view v) { return set_scale(input.samples, v); }},
    {"db",
     [](FigureInput& input, std::string_view v) {
       input.decibels = input.source == FigureSource::spectrum;
       return input.decibels && v.empty();
     }},
};

const InputOption* option_of(std::string_view text) {
  const auto option = std::ranges::find_if(
      input_options, [text](const InputOption& known) { return text.starts_with(known.key); });
  return option != std::end(input_options) ? option : nullptr;
}

bool set_options(FigureInput& input, std::string_view options) {
  while (options.starts_with(',')) {
    options.remove_prefix(1);
    const std::string_view text = options.substr(0, options.find(','));
    const InputOption* const option = option_of(text);
    if (option == nullptr || !option->set(input, text.substr(option->key.size()))) return false;
    options.remove_prefix(text.size());
  }
  return options.empty();
}

// A comma before each.
std::string options_text(const FigureInput& input) {
  const FigureInput plain = {};
  std::string text;
  if (input.start != plain.start) text += scale_text(",start=", input.start);
  if (input.step != plain.step) text += ",step=" + text_of(input.step);
  text += scale_text(",from=", input.from);
  text += scale_text(",xsc=", input.xsc);
  text += scale_text(",ysc=", input.ysc);
  text += scale_text(",full=", input.full);
  text += scale_text(",samples=", input.samples);
  return input.decibels ? text + ",db" : text;
}

// Where the options begin: behind the name, which may hold commas itself.
std::size_t name_length(std::string_view word) {
  std::size_t length = word.size();
  for (std::size_t comma = word.rfind(','); comma != std::string_view::npos && comma > 0;
       comma = word.rfind(',', comma - 1)) {
    if (option_of(word.substr(comma + 1)) == nullptr) break;
    length = comma;
  }
  return length;
}

}  // namespace

std::optional<FigureFormat> figure_format_named(std::string_view word) {
  return named<FigureFormat>(word, format_names);
}

std::optional<FigureFormat> figure_format_of(std::string_view name) {
  return figure_format_named(ending_of(name));
}

std::string figure_word(const FigureInput& input) {
  return input.name + options_text(input);
}

FigureSource figure_source_of(std::string_view name) {
  const std::string ending = ending_of(name);
  if (ending == "spe") return FigureSource::spectrum;
  return ending == "vob" ? FigureSource::diagram : FigureSource::signal;
}

std::optional<FigureInput> figure_input_of(std::string_view word) {
  const std::size_t length = name_length(word);
  FigureInput input = {.name = std::string(word.substr(0, length))};
  input.source = figure_source_of(input.name);
  if (!set_options(input, word.substr(length))) return std::nullopt;
  return input;
}

std::optional<FigureSize> figure_size_of(std::string_view word) {
  const std::size_t x = word.find('x');
  if (x == std::string_view::npos) return std::nullopt;
  const auto width = number_in<int>(word.substr(0, x));
  const auto height = number_in<int>(word.substr(x + 1));
  if (!width || !height) return std::nullopt;
  return FigureSize{*width, *height};
}

bool figure_size_fits(const FigureRequest& request) {
  constexpr double least_width = 160;
  constexpr double least_height = 60;  // points, of each input, and once more
  if (!request.size) return true;
  const double scale = request.format == FigureFormat::png ? png_scale : 1;
  const auto [width, height] = *request.size;
  return width >= least_width * scale && width <= most_figure_size && height <= most_figure_size &&
         height >= least_height * static_cast<double>(request.inputs.size() + 1) * scale;
}

std::vector<std::string> figure_arguments(const FigureRequest& request) {
  std::vector<std::string> words = {
      std::string(format_names.at(static_cast<std::size_t>(request.format))),
      request.size ? text_of(request.size->width) + "x" + text_of(request.size->height)
                   : default_size,
      request.title};
  for (const FigureInput& input : request.inputs) {
    words.emplace_back(source_names.at(static_cast<std::size_t>(input.source)));
    words.push_back(options_text(input));
    words.push_back(input.name);
  }
  return words;
}

std::optional<FigureRequest> figure_request_of(std::span<const std::string> words) {
  constexpr std::size_t head = 3;
  constexpr std::size_t words_of_an_input = 3;
  if (words.size() <= head || (words.size() - head) % words_of_an_input != 0) return std::nullopt;
  const auto format = figure_format_named(words[0]);
  FigureRequest request = {.format = format.value_or(FigureFormat::pdf),
                           .size = figure_size_of(words[1]),
                           .title = words[2]};
  if (!format || (!request.size && words[1] != default_size)) return std::nullopt;
  for (auto rest = words.subspan(head); !rest.empty(); rest = rest.subspan(words_of_an_input)) {
    const auto source = named<FigureSource>(rest[0], source_names);
    FigureInput input = {.name = rest[2], .source = source.value_or(FigureSource::signal)};
    if (!source || !set_options(input, rest[1])) return std::nullopt;
    request.inputs.push_back(input);
  }
  const bool are_fitting = request.inputs.size() <= most_figure_inputs;
  return are_fitting && figure_size_fits(request) ? std::optional(request) : std::nullopt;
}

}  // namespace torve
