#include "figure/drawing.hpp"

#include <algorithm>
#include <cstddef>

#include "base/typed_names.hpp"

namespace torve {

namespace {

constexpr double smallest_size = 5;  // points: below that nobody reads it

bool is_continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// --- UTF-8 --------------------------------------------------------------------------------------

// Moves past the character that `text` begins with; false where that is none, or none for XML.
bool skip_character(std::string_view& text) {
  struct Form {
    unsigned mask, begin;
    std::size_t length;
    char32_t least;
  };
  constexpr Form forms[] = {{0x80, 0x00, 1, 0x00},
                            {0xE0, 0xC0, 2, 0x80},
                            {0xF0, 0xE0, 3, 0x800},
                            {0xF8, 0xF0, 4, 0x10000}};
  const auto first = static_cast<unsigned char>(text.front());
  for (const Form& form : forms) {
    if ((first & form.mask) != form.begin || text.size() < form.length) continue;
    char32_t character = first & ~form.mask;
    for (std::size_t i = 1; i < form.length; ++i) {
      if (!is_continuation(text[i])) return false;
      character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    const bool is_surrogate = character >= 0xD800 && character < 0xE000;
    const bool is_none = (character & 0xFFFE) == 0xFFFE;
    if (character < form.least || is_surrogate || is_none || character > 0x10FFFF) return false;
    text.remove_prefix(form.length);
    return true;
  }
  return false;
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    if (!skip_character(text)) return false;
  }
  return true;
}

// --- widths -------------------------------------------------------------------------------------

// In parts of the size, above what the usual fonts have.
double width_of(char character) {
  constexpr std::string_view narrow = "iljI.,:;'|!()[]/ -ft";
  constexpr std::string_view wide = "mwMW@%";
  constexpr std::string_view capitals = "ABCDEFGHJKLNOPQRSTUVXYZ&#+=<>~_?";
  if (narrow.find(character) != std::string_view::npos) return 0.42;
  if (wide.find(character) != std::string_view::npos) return 1.02;
  if (capitals.find(character) != std::string_view::npos) return 0.84;
  constexpr char general_punctuation = '\xE2';  // minus signs and the like, of three bytes
  if (character == general_punctuation) return 0.5;
  return is_continuation(character) ? 0.25 : 0.65;
}

}  // namespace

double widest(std::string_view text, double size) {
  double width = 0;
  for (const char character : text)
    width += width_of(character);
  return width * size;
}

Text fitted(Text text, double room) {
  const double width = widest(text.text, text.size);
  if (width <= room) return text;
  const double fitting = text.size * room / width;
  text.size = std::max(smallest_size, fitting);
  if (fitting >= smallest_size) return text;
  const std::string_view mark = "…";
  while (!text.text.empty() && widest(text.text, text.size) + text.size > room) {
    while (is_continuation(text.text.back()))
      text.text.pop_back();
    text.text.pop_back();
  }
  text.text += mark;
  return text;
}

std::string text_of_bytes(std::string_view bytes) {
  std::string text = is_utf8(bytes) ? std::string(bytes) : utf8_of_latin1(bytes);
  std::ranges::replace_if(
      text, [](char character) { return (character >= 0 && character < ' ') || character == 0x7F; },
      ' ');
  return text;
}

}  // namespace torve
