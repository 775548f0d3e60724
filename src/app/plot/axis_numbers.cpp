#include "app/plot/axis_numbers.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace torve {

namespace {

constexpr int significant_digits = 4;
constexpr double smallest_plain = 0.01;  // below, three decimals would leave a single digit
constexpr double nudge = 1e-9;  // relative: 0.3 that was computed as 0.29999999999 is meant as 0.3

// |value| as an integer mantissa of `digits` digits, truncated, and a power of ten.
struct Decimal {
  long mantissa;
  int exponent;
};

Decimal decimal(double magnitude, int digits) {
  const double scaled_up = magnitude * (1 + nudge);
  int exponent = static_cast<int>(std::floor(std::log10(scaled_up))) - digits + 1;
  // Two steps, because 10^-exponent itself may lie outside the range of double.
  const double half = std::pow(10.0, -(exponent / 2));
  const double rest = std::pow(10.0, -(exponent - exponent / 2));
  return {static_cast<long>(scaled_up * half * rest), exponent};
}

std::string without_trailing_zeros(std::string text) {
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string plain(double magnitude, int decimals) {
  const double unit = std::pow(10.0, decimals);
  const double cut = std::floor(magnitude * (1 + nudge) * unit) / unit;
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, cut, std::chars_format::fixed, decimals);
  const bool exact = std::fabs(magnitude - cut) <= nudge * magnitude;
  const std::string all_digits(text, end.ptr);
  return exact ? without_trailing_zeros(all_digits) : all_digits;
}

// "1.234e-5" with `digits` digits, zeros at the end of the mantissa dropped.
std::string with_exponent(double magnitude, int digits) {
  Decimal number = decimal(magnitude, digits);
  std::string mantissa = std::to_string(number.mantissa);
  const int exponent = number.exponent + static_cast<int>(mantissa.size()) - 1;
  if (mantissa.size() > 1) mantissa.insert(1, 1, '.');
  return without_trailing_zeros(mantissa) + "e" + std::to_string(exponent);
}

// "12e-4": two digits in the room that the point would take.
std::string two_digits_with_exponent(double magnitude) {
  const Decimal number = decimal(magnitude, 2);
  return std::to_string(number.mantissa) + "e" + std::to_string(number.exponent);
}

std::optional<std::string> plain_text(double magnitude, std::size_t room) {
  if (magnitude < smallest_plain || magnitude >= 1e15) return std::nullopt;
  const int whole_digits = std::max(0, static_cast<int>(std::floor(std::log10(magnitude))) + 1);
  for (int decimals = std::max(0, significant_digits - std::max(1, whole_digits)); decimals >= 0;
       --decimals) {
    std::string text = plain(magnitude, decimals);
    if (text.size() <= room && text != "0") return text;
  }
  return std::nullopt;
}

std::string exponent_text(double magnitude, std::size_t room) {
  for (int digits = significant_digits; digits >= 2; --digits) {
    std::string text = with_exponent(magnitude, digits);
    if (text.size() <= room) return text;
  }
  std::string text = two_digits_with_exponent(magnitude);
  if (text.size() <= room) return text;
  text = with_exponent(magnitude, 1);
  return text.size() <= room ? text : std::string();
}

}  // namespace

std::string axis_number(double value, int most_characters) {
  if (!std::isfinite(value)) return {};
  if (value == 0) return "0";
  const std::string sign = value < 0 ? "-" : "";
  const std::size_t room = static_cast<std::size_t>(std::max(0, most_characters)) - sign.size();
  const double magnitude = std::fabs(value);
  const std::string text = plain_text(magnitude, room).value_or(std::string());
  if (!text.empty()) return sign + text;
  const std::string with_power = exponent_text(magnitude, room);
  return with_power.empty() ? with_power : sign + with_power;
}

std::string whole_axis_number(double value, int most_characters) {
  return axis_number(std::trunc(value), most_characters);
}

}  // namespace torve
