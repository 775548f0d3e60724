// The letters of names and labels.
#pragma once

#include <string>
#include <string_view>

namespace torve {

/// A name as UTF-8. The fonts of the canvas have letters of Polish and the Nordic languages at the
/// codes from 1 to 24; other bytes are Latin-1.
[[nodiscard]] std::string utf8_of_name(std::string_view name);

/// The letter at a code of the fonts, null when it is none of those.
[[nodiscard]] const char* national_letter(char code);

}  // namespace torve
