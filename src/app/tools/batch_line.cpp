#include "app/tools/batch_line.hpp"

#include <charconv>
#include <string_view>

#include "base/saturate.hpp"

namespace torve {

namespace {

constexpr std::string_view harmless =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._/+-,:=@%";

std::string quoted(const std::string& word) {
  if (!word.empty() && word.find_first_not_of(harmless) == std::string::npos) return word;
  std::string text = "'";
  for (const char character : word) {
    if (character == '\'') {
      text += "'\\''";
    } else {
      text += character;
    }
  }
  return text + "'";
}

}  // namespace

std::string batch_line(std::initializer_list<std::string> words) {
  std::string line = "torve-batch";
  for (const std::string& word : words) {
    line += ' ';
    line += quoted(word);
  }
  return line;
}

std::string batch_number(double value) {
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, value);
  return {text, end.ptr};
}

std::string picture_name(int pane) {
  return "plot" + std::to_string(pane + 1) + ".gif";
}

std::string batch_plot_line(const PaneView& view, int pane, const std::string& output) {
  const std::string number = std::to_string(pane + 1);
  const std::string start = std::to_string(saturate_to_int(view.start));
  const std::string step = std::to_string(view.step);
  const std::string xsc = batch_number(view.xsc);
  const std::string ysc = batch_number(view.ysc);
  if (view.samples == "all") {
    return batch_line({"plot", view.file, number, output, start, step, xsc, ysc});
  }
  return batch_line({"plot", view.file, number, output, start, step, xsc, ysc, view.samples});
}

}  // namespace torve
