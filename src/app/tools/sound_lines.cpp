#include "app/tools/sound_lines.hpp"

#include <sys/stat.h>
#include <tuple>

#include "app/signal/sample_file.hpp"
#include "app/signal/say.hpp"
#include "app/signal/sound_import.hpp"
#include "base/files.hpp"
#include "base/typed_names.hpp"

namespace torve {

namespace {

/// Whether there is a file `made` that is not older than `original`.
bool is_up_to_date(const std::string& made, const std::string& original) {
  struct stat made_info = {};
  struct stat original_info = {};
  if (stat(meant_output(made).c_str(), &made_info) != 0 || !S_ISREG(made_info.st_mode))
    return false;
  if (stat(meant_input(original).c_str(), &original_info) != 0) return false;
  const auto moment = [](const struct stat& info) {
    return std::tuple(info.st_mtim.tv_sec, info.st_mtim.tv_nsec);
  };
  return moment(made_info) >= moment(original_info);
}

/// Short: the strip has room for some 70 characters.
std::string strip_line(const std::string& res, const Imported& imported) {
  std::string line = res + ": channel 1 of " + std::to_string(imported.format.channels);
  if (imported.samples <= most_samples) return line;
  return line + ", the first " + std::to_string(most_samples) + " of " +
         std::to_string(imported.samples) + " samples";
}

}  // namespace

std::string signal_name_of(const std::string& sound_name) {
  return strip_off_ending(sound_name) + ".res";
}

Outcome make_signal_of(const std::string& sound_name, std::string* line) {
  const std::string res = signal_name_of(sound_name);
  if (is_up_to_date(res, sound_name)) {
    *line = res + " is newer than " + sound_name + ": shown as it is";
    return {};
  }
  Imported imported;
  Outcome outcome = import_sound(sound_name, res, {}, &imported, OldContent::kept);
  if (!outcome.is_done()) return outcome;
  say("%s: %s\n%s: %s\n", sound_name.c_str(), format_line(imported.format).c_str(), res.c_str(),
      import_line(imported).c_str());
  *line = strip_line(res, imported);
  if (!outcome.kept_as.empty()) *line += "; kept as " + outcome.kept_as;
  return outcome;
}

Outcome make_sound_of(const std::string& res_name, const std::string& sound_name,
                      std::string* line) {
  Exported exported;
  Outcome outcome = export_sound(res_name, sound_name, &exported);
  if (!outcome.is_done()) return outcome;
  *line = sound_name + ": " + export_line(exported);
  say("%s\n", line->c_str());  // the strip lies partly behind the menu
  return outcome;
}

Outcome list_sound_facts(const std::string& sound_name, std::string* line) {
  SoundFormat format;
  Outcome outcome = list_sound(sound_name, &format);
  if (outcome.is_done()) *line = sound_name + ": " + format_line(format);
  return outcome;
}

}  // namespace torve
