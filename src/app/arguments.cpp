#include "app/arguments.hpp"

#include <charconv>
#include <cstdio>
#include <string_view>
#include <unistd.h>

#include "base/console.hpp"
#include "display/scale.hpp"

namespace torve {

namespace {

enum Status { status_done = 0, status_usage = 1, status_failed = 2 };
constexpr std::size_t most_panes = 3;

constexpr const char* help =
    "usage: torve [--scale N] [FILE ...]\n\n"
    "Opens the workbench in the working directory. Up to three signals (.res) or spectra (.spe) "
    "are\n"
    "for the panes, and a diagram (.vob) for the canvas; without them the panes show bhld1.res,\n"
    "bhld2.res and compar3.res.\n\n"
    "  --scale N  shows every pixel N times as wide and as high (1 to 8); without it the\n"
    "             resolution of the screen (X resource Xft.dpi) decides\n"
    "  --help     this text\n"
    "  --version  the version\n\n"
    "torve-batch does the analyses without a window.\n";

int print(const char* text) {
  const bool printed = std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0;
  if (printed && !started_without(STDOUT_FILENO)) return status_done;
  std::fputs("torve: standard output could not be written\n", stderr);
  return status_failed;
}

int refuse(const char* word, const char* what) {
  std::fprintf(stderr, "torve: %s: %s (see torve --help)\n", word, what);
  return status_usage;
}

/// What is wrong with a further file; null if nothing is.
const char* take_file(StartFiles& files, std::string_view name) {
  if (name.ends_with(".vob")) {
    if (!files.diagram.empty()) return "a second diagram";
    files.diagram = name;
    return nullptr;
  }
  if (!name.ends_with(".res") && !name.ends_with(".spe")) return "neither .res, .spe nor .vob";
  if (files.panes.size() == most_panes) return "there are three panes";
  files.panes.emplace_back(name);
  return nullptr;
}

/// 0 where the word is no scale.
int scale_of(std::string_view word) {
  int scale = 0;
  const auto [stop, error] = std::from_chars(word.begin(), word.end(), scale);
  const bool is_number = error == std::errc() && stop == word.end();
  return is_number && scale >= 1 && scale <= largest_scale ? scale : 0;
}

/// The same of the word behind --scale, which it takes from the front.
const char* take_scale(StartFiles& files, std::span<char* const>& words) {
  files.scale = words.empty() ? 0 : scale_of(words.front());
  if (files.scale == 0) return "needs a number from 1 to 8";
  words = words.subspan(1);
  return nullptr;
}

}  // namespace

std::optional<StartFiles> read_arguments(std::span<char* const> words, int* status) {
  StartFiles files;
  while (!words.empty()) {
    const char* const word = words.front();
    const std::string_view text = word;
    words = words.subspan(1);
    if (text == "--help") {
      *status = print(help);
      return std::nullopt;
    }
    if (text == "--version") {
      *status = print("torve " TORVE_VERSION "\n");
      return std::nullopt;
    }
    const char* const problem = text == "--scale"       ? take_scale(files, words)
                                : text.starts_with("-") ? "no option"
                                                        : take_file(files, text);
    if (problem == nullptr) continue;
    *status = refuse(word, problem);
    return std::nullopt;
  }
  return files;
}

}  // namespace torve
