#include "diagram/model/label_letters.hpp"

#include <array>

namespace torve {

const char* national_letter(char code) {
  constexpr std::array<const char*, 24> letters = {"ł", "ą", "ę", "ć", "ś", "ź", "ż", "ó",
                                                   "Ł", "Ą", "Ę", "Ć", "Ś", "Ź", "Ż", "ń",
                                                   "å", "ä", "ö", "Å", "Ä", "Ö", "Ó", "Ń"};
  const auto number = static_cast<unsigned char>(code);
  return number >= 1 && number <= letters.size() ? letters.at(number - 1U) : nullptr;
}

std::string utf8_of_name(std::string_view name) {
  constexpr unsigned two_bytes = 0x80, first = 0xC0, low_bits = 0x3F;
  std::string text;
  for (const char character : name) {
    const auto code = static_cast<unsigned char>(character);
    if (const char* letter = national_letter(character)) {
      text += letter;
    } else if (code < two_bytes) {
      text += character;
    } else {
      text += static_cast<char>(first | (code >> 6U));
      text += static_cast<char>(two_bytes | (code & low_bits));
    }
  }
  return text;
}

}  // namespace torve
