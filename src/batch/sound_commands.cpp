#include "batch/sound_commands.hpp"

#include <cstdio>

#include "app/signal/sound_import.hpp"
#include "batch/status.hpp"
#include "batch/warnings.hpp"
#include "sound/sound_names.hpp"

namespace torve {

namespace {

/// "mix", or 1 and up.
std::optional<int> channel_of(const std::string& word) {
  if (word == "mix") return mixed_channels;
  const auto channel = number_of<int>(word);
  return channel && *channel >= 1 ? channel : std::nullopt;
}

/// Seconds from 0 on; `absent` where there is no such word. False for what is no such number.
bool take_seconds(const Request& request, std::size_t i, std::optional<double>& seconds) {
  if (i >= request.words.size()) return true;
  seconds = number_of<double>(request.words[i]);
  return seconds && *seconds >= 0;
}

void say_of(const std::string& name, const std::string& line) {
  std::printf("%s: %s\n", shown_name(name).c_str(), line.c_str());
}

}  // namespace

int run_import(const Request& request) {
  const auto channel = channel_of(word_or(request, 2, "1"));
  std::optional<double> start = 0;
  std::optional<double> end;
  if (!channel || !take_seconds(request, 3, start) || !take_seconds(request, 4, end)) {
    return exit_usage;
  }
  const InputName sound(request.words[0]);
  OutputName res(request.words[1]);
  const Outcome& bad = first_failure(sound, res);
  if (!bad.is_done()) return status_of(request, bad);
  Imported imported;
  const Outcome outcome = import_sound(
      sound.name(), res.name(), {.channel = *channel, .start = *start, .end = end}, &imported);
  if (outcome.is_done()) {
    say_of(sound.name(), format_line(imported.format));
    say_of(res.name(), import_line(imported));
  }
  return status_of(request, outcome, res);
}

int run_export(const Request& request) {
  const std::string& sound = request.words[1];
  if (!sound_kind(sound)) return exit_usage;
  const InputName res(request.words[0]);
  if (!res.outcome().is_done()) return status_of(request, res.outcome());
  warn_about_signal(res.name(), {}, Taken::whole);
  Exported exported;
  const Outcome outcome = export_sound(res.name(), sound, &exported);
  if (outcome.is_done()) say_of(sound, export_line(exported));
  return status_of(request, outcome);
}

}  // namespace torve
