#include "base/outcome.hpp"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <sys/stat.h>

#include "base/typed_names.hpp"

namespace torve {

namespace {

struct CauseText {
  Cause cause;
  const char* text;
};

constexpr std::array texts = {
    CauseText{Cause::done, ""},
    CauseText{Cause::no_file, "there is no such file"},
    CauseText{Cause::unreadable, "cannot be read"},
    CauseText{Cause::not_created, "cannot be written"},
    CauseText{Cause::not_written, "could not be written"},
    CauseText{Cause::no_memory, "there is not enough memory"},
    CauseText{Cause::too_few_samples, "too few samples"},
    CauseText{Cause::no_match, "no match near the start"},
    CauseText{Cause::negative_start, "the start must not be negative"},
    CauseText{Cause::not_au_file, "not an AU file"},
    CauseText{Cause::no_spectrum, "a spectrum has to be computed first"},
    CauseText{Cause::start_behind_end, "has fewer lines than are to be skipped"},
    CauseText{Cause::nothing_to_draw, "there is nothing to draw"},
    CauseText{Cause::unknown_ending, "the name ends in none of the known ways"},
    CauseText{Cause::not_sound, "cannot be read as sound"},
    CauseText{Cause::out_of_range, "has no such part"},
    CauseText{Cause::silent, "is silent there"},
    CauseText{Cause::no_codec, "sound files cannot be used here"},
    CauseText{Cause::not_run, "could not be run"},
    CauseText{Cause::cancelled, "cancelled"},
};

constexpr bool are_in_order() {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (texts[i].cause != static_cast<Cause>(i)) return false;
  }
  return texts.back().cause == last_cause;
}
static_assert(are_in_order());

}  // namespace

Outcome input_failure(const std::string& name) {
  struct stat info = {};
  const bool is_missing =
      stat(meant_input(name).c_str(), &info) != 0 && (errno == ENOENT || errno == ENOTDIR);
  return {.cause = is_missing ? Cause::no_file : Cause::unreadable, .name = name};
}

std::string sentence(const Outcome& outcome) {
  if (outcome.is_done()) return {};
  if (outcome.cause == Cause::cancelled) return "Cancelled: " + outcome.name + " is as it was";
  std::string text = texts.at(static_cast<std::size_t>(outcome.cause)).text;
  if (!outcome.name.empty()) text = outcome.name + ": " + text;
  if (!outcome.reason.empty()) text += " (" + outcome.reason + ")";
  if (outcome.error != 0) text += std::string(" (") + std::strerror(outcome.error) + ")";
  return text;
}

}  // namespace torve
