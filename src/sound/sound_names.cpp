#include "sound/sound_names.hpp"

#include <algorithm>
#include <array>
#include <cctype>

namespace torve {

namespace {

struct Ending {
  std::string_view text;
  std::optional<SoundKind> written = std::nullopt;
};

constexpr std::array endings = {
    Ending{".wav", SoundKind::wav},
    Ending{".flac", SoundKind::flac},
    Ending{".aif", SoundKind::aiff},
    Ending{".aiff", SoundKind::aiff},
    Ending{".ogg"},
    Ending{".caf"},
    Ending{".snd"},
};

bool ends_so(std::string_view name, std::string_view ending) {
  return name.size() > ending.size() &&
         std::equal(ending.rbegin(), ending.rend(), name.rbegin(), [](char wanted, char there) {
           return wanted == std::tolower(static_cast<unsigned char>(there));
         });
}

const Ending* ending_of(std::string_view name) {
  const auto* const found = std::ranges::find_if(
      endings, [name](const Ending& ending) { return ends_so(name, ending.text); });
  return found == endings.end() ? nullptr : found;
}

}  // namespace

bool names_sound(std::string_view name) {
  return ending_of(name) != nullptr;
}

std::optional<SoundKind> sound_kind(std::string_view name) {
  const Ending* const ending = ending_of(name);
  return ending != nullptr ? ending->written : std::nullopt;
}

}  // namespace torve
