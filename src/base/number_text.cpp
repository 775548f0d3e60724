#include "base/number_text.hpp"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>
#include <string_view>

namespace torve {

namespace {

/// The C locale for this thread, until the end of the scope.
class CLocaleScope {
 public:
  CLocaleScope() : before_(uselocale(c_locale())) {}
  ~CLocaleScope() { uselocale(before_); }
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;

 private:
  static locale_t c_locale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
  }
  locale_t before_;
};

constexpr std::array<char, 200> digit_pairs = [] {
  std::array<char, 200> pairs = {};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

void put_pair(char* out, std::uint64_t pair) {
  std::memcpy(out, &digit_pairs[static_cast<std::size_t>(2 * pair)], 2);
}

constexpr std::array<std::uint64_t, 20> integer_powers_of_ten = [] {
  std::array<std::uint64_t, 20> powers = {1};
  for (std::size_t i = 1; i != powers.size(); ++i)
    powers[i] = 10 * powers[i - 1];
  return powers;
}();

int count_digits(std::uint64_t value) {
  value |= 1;  // one digit for 0, too
  // log10(2) is 1233 / 4096: never too large for 64 bits, and too small by less than one.
  const int below = static_cast<int>(std::bit_width(value)) * 1233 >> 12;
  return below + (value >= integer_powers_of_ten[static_cast<std::size_t>(below)] ? 1 : 0);
}

char* put_unsigned(char* out, std::uint64_t value) {
  char* const end = out + count_digits(value);
  char* at = end;
  for (; value >= 100; value /= 100)
    put_pair(at -= 2, value % 100);
  if (value >= 10) {
    put_pair(at - 2, value);
  } else {
    at[-1] = static_cast<char>('0' + value);
  }
  return end;
}

/// |value| x 10^6 rounded as the exact product would be, half to even; |value| < fixed6_limit.
std::uint64_t millionths(double value) {
  // Below 2^51 adding and taking away this number rounds to an integer, half to even.
  constexpr double rounder = 0x1.8p52;
  const double scaled = value * 1e6;
  double rounded = (scaled + rounder) - rounder;
  // A float has 24 bits and 10^6 has 14: their product is exact. A double's may have been rounded
  // onto a half; the rest that the product lost then decides.
  if (static_cast<double>(static_cast<float>(value)) != value) {
    const double rest = std::fma(value, 1e6, -scaled);
    if (rest != 0 && std::fabs(scaled - rounded) == 0.5) {
      rounded = std::floor(scaled) + (rest > 0 ? 1 : 0);
    }
  }
  return static_cast<std::uint64_t>(rounded);
}

constexpr double fixed6_limit = 2.2e9;

constexpr std::array<double, 16> powers_of_ten = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// The bits that a double has beyond a float, when they stand exactly half way between two floats.
bool is_half_way_between_floats(double value) {
  return (std::bit_cast<std::uint64_t>(value) & 0x1fffffff) == 0x10000000;
}

}  // namespace

char* put_fixed6(char* out, double value) {
  const double magnitude = std::fabs(value);
  if (!(magnitude < fixed6_limit)) {
    return std::to_chars(out, out + longest_fixed6, value, std::chars_format::fixed, 6).ptr;
  }
  const std::uint64_t scaled = millionths(magnitude);
  if (std::signbit(value)) *out++ = '-';
  out = put_unsigned(out, scaled / 1000000);
  const std::uint64_t decimals = scaled % 1000000;
  *out = '.';
  put_pair(out + 1, decimals / 10000);
  put_pair(out + 3, decimals / 100 % 100);
  put_pair(out + 5, decimals % 100);
  return out + 7;
}

bool same_fixed6(double a, double b) {
  const double magnitude_a = std::fabs(a);
  const double magnitude_b = std::fabs(b);
  if (magnitude_a < fixed6_limit && magnitude_b < fixed6_limit)
    return std::signbit(a) == std::signbit(b) && millionths(magnitude_a) == millionths(magnitude_b);
  std::array<char, longest_fixed6> text_a;
  std::array<char, longest_fixed6> text_b;
  const char* const end_a = put_fixed6(text_a.data(), a);
  const char* const end_b = put_fixed6(text_b.data(), b);
  return std::string_view(text_a.data(), end_a) == std::string_view(text_b.data(), end_b);
}

char* put_decimal(char* out, std::int64_t value) {
  if (value >= 0) return put_unsigned(out, static_cast<std::uint64_t>(value));
  *out = '-';
  return put_unsigned(out + 1, 0 - static_cast<std::uint64_t>(value));
}

bool scan_plain_float(const char** text, float* value) {
  const char* at = *text;
  const bool negative = *at == '-';
  if (negative) ++at;
  const auto digit_at = [](const char* p) { return static_cast<unsigned>(*p - '0'); };
  std::uint64_t digits = 0;
  const char* const first = at;
  for (unsigned digit; (digit = digit_at(at)) <= 9; ++at)
    digits = digits * 10 + digit;
  std::ptrdiff_t count = at - first;
  std::ptrdiff_t decimals = 0;
  if (*at == '.') {
    const char* const point = at++;
    for (unsigned digit; (digit = digit_at(at)) <= 9; ++at)
      digits = digits * 10 + digit;
    decimals = at - point - 1;
    count += decimals;
  }
  if (count < 1 || count > 15) return false;
  *text = at;
  // Both are exact, so this rounds once; a second rounding, to float, is safe off the half way.
  const double exact_to_double =
      static_cast<double>(digits) / powers_of_ten[static_cast<std::size_t>(decimals)];
  if (is_half_way_between_floats(exact_to_double)) return false;
  *value = static_cast<float>(negative ? -exact_to_double : exact_to_double);
  return true;
}

bool scan_sample_line(const char* line, float* value) {
  const CLocaleScope c_locale;
  return std::sscanf(line, "%*d %f", value) == 1;
}

std::optional<int> read_int(const std::string& text) {
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (end == text.c_str()) return std::nullopt;
  if (value < std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
  if (value > std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
  return static_cast<int>(value);
}

std::optional<float> read_float(const std::string& text) {
  const CLocaleScope c_locale;
  float value = 0;
  if (std::sscanf(text.c_str(), "%f", &value) != 1) return std::nullopt;
  return value;
}

}  // namespace torve
