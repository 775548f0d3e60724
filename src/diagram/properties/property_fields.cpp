#include "diagram/properties/property_fields.hpp"

#include <cstdint>
#include <cstring>

#include "diagram/properties/number_fields.hpp"
#include "diagram/properties/vocabulary.hpp"

namespace torve {

namespace {

std::string word_text(const FigureProperty& property, int& stored) {
  CodeAndNumber parts = split_code(property, stored);
  char word[field_room] = {};
  if (cnvtbl_i_to_s(property.words, parts.code, word) != 0) {
    cnvtbl_set(property.words, property.first_entry, word, &parts.code);
    stored = join_code(property, parts);
  }
  return property.code_bits == 0 ? word : word + (' ' + std::to_string(parts.number));
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

void store_word(const FigureProperty& property, int& stored, const char* text) {
  CodeAndNumber parts = {};
  if (cnvtbl_s_to_i(property.words, text, &parts.code) != 0) return;
  std::int32_t number = 0;
  const char* behind = skip_blanks(text_behind_word(property.words, text));
  if (property.code_bits != 0 && *behind != 0 && !read_whole(behind, &number)) return;
  parts.number = number;
  stored = join_code(property, parts);
}

void store_integer(int& stored, const char* text) {
  std::int32_t value = 0;
  if (read_whole(text, &value)) stored = value;
}

void store_real(double& stored, const char* text) {
  double value = 0;
  if (was_read(text, get_float(text, &value))) stored = value;
}

void store_share(double& stored, const char* text) {
  double value = no_probability;
  if (is_blank(text)) {
    stored = value;
  } else if (was_read(text, get_float(text, &value))) {
    if (value >= 0 && value <= 1) {
      stored = value;
    } else {
      report_unknown(text);
    }
  }
}

}  // namespace

std::string property_text(const PropertyField& field, FigureRecord& figure) {
  const FigureProperty& property = field.property;
  if (property.text != nullptr) return property.text(figure);
  if (property.real != nullptr) {
    const double value = property.real(figure);
    return property.is_share && value == no_probability ? "" : shown_real(value);
  }
  int& stored = property.integer(figure);
  return property.words.empty() ? std::to_string(stored) : word_text(property, stored);
}

void store_property(const PropertyField& field, FigureRecord& figure, const char* text) {
  const FigureProperty& property = field.property;
  if (text == property_text(field, figure)) return;
  if (property.text != nullptr) {
    store_text(property.text(figure), text);
  } else if (property.is_share) {
    store_share(property.real(figure), text);
  } else if (property.real != nullptr) {
    store_real(property.real(figure), text);
  } else if (property.words.empty()) {
    store_integer(property.integer(figure), text);
  } else {
    store_word(property, property.integer(figure), text);
  }
}

}  // namespace torve
