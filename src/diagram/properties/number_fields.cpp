#include "diagram/properties/number_fields.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace torve {

namespace {

constexpr int most_decimals = 6;    // read behind leading zeros
constexpr int most_exponent = 400;  // beyond it a double is 0 or too large anyway
constexpr double ten = 10;

bool is_digit(char character) {
  return character >= '0' && character <= '9';
}

const char* skip_blanks(const char* text) {
  return text + std::strspn(text, " \t");
}

const char* skip_digits(const char* text) {
  return text + std::strspn(text, "0123456789");
}

// Moves behind a sign; whether it is a minus.
bool take_minus(const char** at) {
  const bool minus = **at == '-';
  if (minus || **at == '+') ++*at;
  return minus;
}

template <typename Integer>
const char* get_integer(const char* text, Integer* value) {
  using Limits = std::numeric_limits<Integer>;
  const char* const start = skip_blanks(text);
  const char* at = start;
  const bool minus = take_minus(&at);
  const std::int64_t limit = minus ? -std::int64_t{Limits::min()} : std::int64_t{Limits::max()};
  *value = 0;
  if (!is_digit(*at)) return start;
  std::int64_t magnitude = 0;
  for (; is_digit(*at); ++at)
    magnitude = std::min(magnitude * 10 + (*at - '0'), limit);
  *value = static_cast<Integer>(minus ? -magnitude : magnitude);
  return at;
}

double take_whole_part(const char** at) {
  double whole = 0;
  for (; is_digit(**at); ++*at)
    whole = whole * ten + (**at - '0');
  return whole;
}

double take_decimals(const char** at) {
  double scale = 1;
  for (; **at == '0'; ++*at)
    scale *= ten;
  double decimals = 0;
  for (int i = 0; i < most_decimals && is_digit(**at); ++i, ++*at) {
    decimals = decimals * ten + (**at - '0');
    scale *= ten;
  }
  *at = skip_digits(*at);
  return decimals / scale;
}

double scaled(double value, int exponent) {
  const double limit = std::numeric_limits<double>::max();
  const int steps = std::min(std::abs(exponent), most_exponent);
  for (int i = 0; i < steps; ++i)
    value = exponent < 0 ? value / ten : value * ten;
  return std::min(value, limit);
}

}  // namespace

const char* get_short(const char* text, std::int16_t* value) {
  return get_integer(text, value);
}

const char* get_long(const char* text, std::int32_t* value) {
  return get_integer(text, value);
}

const char* get_float(const char* text, double* value) {
  const char* const start = skip_blanks(text);
  const char* at = start;
  const bool minus = take_minus(&at);
  *value = 0;
  const bool has_separator = *at == '.' || *at == ',';
  if (!is_digit(at[has_separator ? 1 : 0])) return start;
  double magnitude = take_whole_part(&at);
  if (*at == '.' || *at == ',') magnitude += take_decimals(&++at);
  std::int16_t exponent = 0;
  if (*at == 'e' || *at == 'E') get_short(at + 1, &exponent);
  magnitude = scaled(magnitude, exponent);
  *value = minus ? -magnitude : magnitude;
  return start + std::strcspn(start, " \t\n\r");
}

}  // namespace torve
