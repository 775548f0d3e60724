#include "diagram/properties/property_fields.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <limits>

#include "diagram/properties/number_fields.hpp"

namespace torve {

namespace {

constexpr int significant_digits = 6;  // of "%g"

// "%g" in the C locale, whatever the locale of the process is.
std::string real_text(double value) {
  std::array<char, field_room> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::general, significant_digits);
  return {text.data(), end.ptr};
}

struct CodeAndNumber {
  int code;
  int number;  // behind the word
};

CodeAndNumber split(const PropertyField& field, int stored) {
  if (field.code_bits == 0) return {stored, 0};
  const int codes = 1 << field.code_bits;
  return {stored & (codes - 1), stored >> field.code_bits};
}

int join(const PropertyField& field, CodeAndNumber parts) {
  if (field.code_bits == 0) return parts.code;
  const int codes = 1 << field.code_bits;
  const int lowest = std::numeric_limits<int>::min() / codes;
  const int highest = std::numeric_limits<int>::max() / codes;
  return std::clamp(parts.number, lowest, highest) * codes + parts.code;
}

std::string word_text(const PropertyField& field, int& stored) {
  CodeAndNumber parts = split(field, stored);
  char word[field_room] = {};
  if (cnvtbl_i_to_s(field.words, parts.code, word) != 0) {
    cnvtbl_set(field.words, field.first_entry, word, &parts.code);
    stored = join(field, parts);
  }
  return field.code_bits == 0 ? word : word + (' ' + std::to_string(parts.number));
}

void store_word(const PropertyField& field, int& stored, const char* text) {
  CodeAndNumber parts = {};
  if (cnvtbl_s_to_i(field.words, text, &parts.code) != 0) return;
  std::int32_t number = 0;
  get_long(text_behind_word(field.words, text), &number);
  parts.number = number;
  stored = join(field, parts);
}

}  // namespace

std::string property_text(const PropertyField& field, Vobj& figure) {
  if (field.real != nullptr) return real_text(field.real(figure));
  if (field.integer == nullptr) return figure.name;
  int& stored = field.integer(figure);
  return field.words.empty() ? std::to_string(stored) : word_text(field, stored);
}

void store_property(const PropertyField& field, Vobj& figure, const char* text) {
  if (text == property_text(field, figure)) return;
  if (field.real != nullptr) {
    get_float(text, &field.real(figure));
  } else if (field.integer == nullptr) {
    std::snprintf(figure.name, sizeof figure.name, "%s", text);
  } else if (field.words.empty()) {
    get_long(text, &field.integer(figure));
  } else {
    store_word(field, field.integer(figure), text);
  }
}

}  // namespace torve
