#include "app/signal/au_codec.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace torve {

namespace {

std::uint8_t low_byte(std::uint64_t value) {
  return static_cast<std::uint8_t>(value & 0xff);
}

/// magnitude = fraction x 2^(biased - bias), 0.5 <= fraction < 1.
struct Parts {
  double fraction;
  int biased;
};

Parts split(double magnitude, int bias) {
  int exponent = 0;
  const double fraction = std::frexp(magnitude, &exponent);
  return {fraction, exponent + bias};
}

struct BinaryFormat {
  int exponent_bits;
  int mantissa_bits;
  int bias;
  int infinity_exponent;  // what an infinity is read as: 2 to this
};

constexpr BinaryFormat binary32 = {8, 23, 127, 127};
constexpr BinaryFormat binary16 = {5, 10, 15, 23};

int decode(const char* bits, const BinaryFormat& format, float* value_out) {
  const int exponent = static_cast<int>(read_binary(bits + 1, format.exponent_bits));
  const std::uint32_t mantissa = read_binary(bits + 1 + format.exponent_bits, format.mantissa_bits);
  const double fraction = std::ldexp(static_cast<double>(mantissa), -format.mantissa_bits);
  double magnitude = 0;
  if (exponent == (1 << format.exponent_bits) - 1) {
    if (mantissa != 0) return 1;
    magnitude = std::ldexp(1.0, format.infinity_exponent);
  } else if (exponent == 0) {
    magnitude = std::ldexp(fraction, 1 - format.bias);
  } else {
    magnitude = std::ldexp(1 + fraction, exponent - format.bias);
  }
  *value_out = static_cast<float>(bits[0] == '1' ? -magnitude : magnitude);
  return 0;
}

}  // namespace

void build_binary32(float value, std::span<std::uint8_t, 4> out) {
  if (std::isnan(value)) return;
  const std::uint8_t sign = value < 0 ? 0x80 : 0;
  const float magnitude = std::min(std::fabs(value), std::numeric_limits<float>::max());
  std::uint64_t mantissa = 0;
  std::uint64_t exponent = 0;
  if (magnitude <= 0x1p-102f) {
    mantissa = static_cast<std::uint64_t>(static_cast<double>(magnitude) * 0x1p149);
    out[2] = low_byte(mantissa >> 16);
  } else {
    const Parts parts = split(static_cast<double>(magnitude), 127);
    mantissa = static_cast<std::uint64_t>(parts.fraction * 0x1p24) - (1 << 23);
    exponent = static_cast<std::uint64_t>(parts.biased - 1);
    out[2] = low_byte((exponent & 1) << 7 | mantissa >> 16);
  }
  out[0] = low_byte(mantissa);
  out[1] = low_byte(mantissa >> 8);
  out[3] = low_byte(sign | exponent >> 1);
}

void build_binary16(float value, std::span<std::uint8_t, 2> out) {
  constexpr double largest = 65504;
  if (std::isnan(value)) return;
  const std::uint8_t sign = value < 0 ? 0x80 : 0;
  const double magnitude = std::min(std::fabs(static_cast<double>(value)), largest);
  // The exponent stands above the mantissa, so a mantissa that rounds up to 2^10 carries into it.
  std::uint64_t bits = 0;
  if (magnitude <= 6.09e-05) {
    bits = static_cast<std::uint64_t>(magnitude * 0x1p24);
  } else {
    const Parts parts = split(magnitude, 15);
    const auto mantissa = static_cast<std::uint64_t>(std::floor(parts.fraction * 0x1p11 + 0.5));
    bits = (static_cast<std::uint64_t>(parts.biased - 1) << 10) + mantissa - (1 << 10);
  }
  out[0] = low_byte(bits);
  out[1] = low_byte(sign | bits >> 8);
}

int sbinary(char* bits_out, const std::uint8_t* in, int width, float* value_out) {
  if (width != 32 && width != 16) {
    *bits_out = '\0';
    *value_out = 0;
    return 0;
  }
  for (int i = 0; i < width; ++i) {
    const int bit = width - 1 - i;
    bits_out[i] = (in[bit / 8] >> (bit % 8) & 1) != 0 ? '1' : '0';
  }
  bits_out[width] = '\0';
  return decode(bits_out, width == 32 ? binary32 : binary16, value_out);
}

std::uint32_t read_binary(const char* bits, int n) {
  std::uint32_t value = 0;
  for (int i = 0; i < n; ++i)
    value = value << 1 | (bits[i] == '1' ? 1U : 0U);
  return value;
}

}  // namespace torve
