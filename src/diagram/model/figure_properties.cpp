#include "diagram/model/figure_properties.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace torve {

std::string shown_real(double value) {
  constexpr int significant_digits = 6;
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::general, significant_digits);
  return {text.data(), end.ptr};
}

CodeAndNumber split_code(const FigureProperty& property, int stored) {
  if (property.code_bits == 0) return {stored, 0};
  const int codes = 1 << property.code_bits;
  return {stored & (codes - 1), stored >> property.code_bits};
}

int join_code(const FigureProperty& property, CodeAndNumber parts) {
  if (property.code_bits == 0) return parts.code;
  const int codes = 1 << property.code_bits;
  const int lowest = std::numeric_limits<int>::min() / codes;
  const int highest = std::numeric_limits<int>::max() / codes;
  return std::clamp(parts.number, lowest, highest) * codes + parts.code;
}

const char* word_for(Vocabulary words, int code) {
  const auto entry = std::find_if(words.begin(), words.end(), [code](const VocabularyEntry& each) {
    return each.code == code;
  });
  return entry != words.end() ? entry->word : nullptr;
}

void settle_codes(FigureRecord& figure) {
  for (const FigureProperty& property : properties_of(row_of(figure.kind).menu)) {
    if (property.words.empty()) continue;
    int& stored = property.integer(figure);
    CodeAndNumber parts = split_code(property, stored);
    if (word_for(property.words, parts.code) != nullptr) continue;
    parts.code = property.words[static_cast<std::size_t>(property.first_entry)].code;
    stored = join_code(property, parts);
  }
}

}  // namespace torve
