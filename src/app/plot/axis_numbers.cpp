#include "app/plot/axis_numbers.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

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

// A magnitude as text, and what the text says.
struct Candidate {
  std::string text;
  double said;
};

using Candidates = std::vector<Candidate>;

double value_of(const std::string& text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

bool is_exact(double said, double magnitude) {
  return std::fabs(said - magnitude) <= nudge * magnitude;
}

// With as many decimals as there is room for, the zero before the point left out.
Candidates rounded_plain(double magnitude, std::size_t room) {
  for (int decimals = static_cast<int>(room) - 1; decimals >= 0 && magnitude < 1e9; --decimals) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, magnitude,
                                   std::chars_format::fixed, decimals);
    std::string text(buffer, end.ptr);
    if (text.starts_with("0.")) text.erase(0, 1);
    if (text.size() > room) continue;
    const double said = value_of("0" + text);
    return {{is_exact(said, magnitude) ? without_trailing_zeros(text) : text, said}};
  }
  return {};
}

// A whole mantissa of each length for which there is room.
Candidates rounded_with_exponent(double magnitude, std::size_t room) {
  Candidates candidates;
  for (int digits = 1; digits < static_cast<int>(room); ++digits) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, magnitude,
                                   std::chars_format::scientific, digits - 1);
    const std::string scientific(buffer, end.ptr);
    const std::size_t e = scientific.find('e');
    std::string mantissa = scientific.substr(0, e);
    std::erase(mantissa, '.');
    mantissa.erase(mantissa.find_last_not_of('0') + 1);
    const int exponent =
        std::stoi(scientific.substr(e + 1)) + 1 - static_cast<int>(mantissa.size());
    const std::string text = mantissa + "e" + std::to_string(exponent);
    if (text.size() <= room) candidates.push_back({text, value_of(text)});
  }
  return candidates;
}

// The first of the nearest, within half of the magnitude; none: an empty text.
Candidate nearest(const Candidates& candidates, double magnitude) {
  Candidate best = {"", 0};
  double least = magnitude / 2;
  for (const Candidate& candidate : candidates) {
    const double error = std::fabs(candidate.said - magnitude);
    if (error >= least - nudge * magnitude) continue;
    least = error;
    best = candidate;
  }
  return best;
}

Candidate nearest(double magnitude, std::size_t room) {
  Candidates candidates = rounded_plain(magnitude, room);
  for (const Candidate& candidate : rounded_with_exponent(magnitude, room))
    candidates.push_back(candidate);
  return nearest(candidates, magnitude);
}

bool has_exponent(const std::string& text) {
  return text.find('e') != std::string::npos;
}

std::string sign_of(double value) {
  return value < 0 ? "-" : "";
}

std::size_t room_for(double value, int most_characters) {
  return static_cast<std::size_t>(std::max(0, most_characters)) - (value < 0 ? 1 : 0);
}

std::string with_zero(std::string text) {
  const std::size_t point = text.find('.');
  const bool lacks_zero = point == 0 || (point == 1 && text[0] == '-');
  if (lacks_zero) text.insert(point, 1, '0');
  return text;
}

// Whether two digits at least fit beside a sign.
bool is_handy(double value) {
  return std::fabs(value) >= 0.01 && std::fabs(value) < 9999.5;
}

// An exponent where the other end has one, if that says nearly the same.
void follow_exponent(std::string& text, double value, int most_characters) {
  constexpr double allowed = 0.005;
  const double magnitude = std::fabs(value);
  const Candidate other =
      nearest(rounded_with_exponent(magnitude, room_for(value, most_characters)), magnitude);
  const double error = std::fabs(other.said - magnitude);
  const double error_now = std::fabs(value_of(with_zero(text)) - value);
  if (other.text.empty()) return;
  if (error <= std::max(allowed, nudge + error_now / magnitude) * magnitude) {
    text = sign_of(value) + other.text;
  }
}

}  // namespace

std::string nearest_axis_number(double value, int most_characters) {
  if (!std::isfinite(value)) return {};
  if (value == 0) return "0";
  const std::string magnitude = nearest(std::fabs(value), room_for(value, most_characters)).text;
  if (magnitude.empty()) return {};
  const std::string text = sign_of(value) + magnitude;
  const std::string longer = with_zero(text);
  return longer.size() <= static_cast<std::size_t>(most_characters) ? longer : text;
}

AxisEnds axis_ends(double top, double bottom, int most_characters) {
  if (is_handy(top) && is_handy(bottom)) {
    const std::size_t room = room_for(-1, most_characters);
    const AxisEnds ends = {sign_of(top) + nearest(std::fabs(top), room).text,
                           sign_of(bottom) + nearest(std::fabs(bottom), room).text};
    const AxisEnds longer = {with_zero(ends.top), with_zero(ends.bottom)};
    const auto limit = static_cast<std::size_t>(most_characters);
    return longer.top.size() <= limit && longer.bottom.size() <= limit ? longer : ends;
  }
  AxisEnds ends = {nearest_axis_number(top, most_characters),
                   nearest_axis_number(bottom, most_characters)};
  if (has_exponent(ends.top)) follow_exponent(ends.bottom, bottom, most_characters);
  if (has_exponent(ends.bottom)) follow_exponent(ends.top, top, most_characters);
  return ends;
}

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

std::string fixed_axis_number(double value, int decimals) {
  if (!std::isfinite(value)) return {};
  char text[400];
  const auto end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
  const std::string number(text, end.ptr);
  return number.find_first_not_of("-0.") == std::string::npos && number[0] == '-' ? number.substr(1)
                                                                                  : number;
}

std::string whole_axis_number(double value, int most_characters) {
  return axis_number(std::trunc(value), most_characters);
}

}  // namespace torve
