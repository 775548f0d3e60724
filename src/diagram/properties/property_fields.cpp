#include "diagram/properties/property_fields.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
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

const char* skip_blanks(const char* text) {
  return text + std::strspn(text, " \t");
}

// Whether something has been read that ends in front of `end`; anything else is reported.
bool was_read(const char* text, const char* end) {
  if (end != skip_blanks(text)) return true;
  report_unknown(text);
  return false;
}

// Decimals say something else than the whole number before them.
bool has_decimals(const char* end) {
  if (*end != '.' && *end != ',') return false;
  const char* digits = end + 1 + std::strspn(end + 1, "0");
  return *digits >= '1' && *digits <= '9';
}

bool read_whole(const char* text, std::int32_t* value) {
  const char* end = get_long(text, value);
  if (!has_decimals(end)) return was_read(text, end);
  report_unknown(text);
  return false;
}

void store_word(const PropertyField& field, int& stored, const char* text) {
  CodeAndNumber parts = {};
  if (cnvtbl_s_to_i(field.words, text, &parts.code) != 0) return;
  std::int32_t number = 0;
  const char* behind = skip_blanks(text_behind_word(field.words, text));
  if (field.code_bits != 0 && *behind != 0 && !read_whole(behind, &number)) return;
  parts.number = number;
  stored = join(field, parts);
}

void store_integer(int& stored, const char* text) {
  std::int32_t value = 0;
  if (read_whole(text, &value)) stored = value;
}

void store_real(double& stored, const char* text) {
  double value = 0;
  if (was_read(text, get_float(text, &value))) stored = value;
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
    store_real(field.real(figure), text);
  } else if (field.integer == nullptr) {
    std::snprintf(figure.name, sizeof figure.name, "%s", text);
  } else if (field.words.empty()) {
    store_integer(field.integer(figure), text);
  } else {
    store_word(field, field.integer(figure), text);
  }
}

}  // namespace torve
