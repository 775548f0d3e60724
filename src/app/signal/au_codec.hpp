// IEEE 754 numbers of 32 and 16 bits, little-endian, coded by arithmetic.
//
// The coders know neither infinity nor not-a-number: what is too large becomes the largest number,
// and a not-a-number leaves the place it would go to as it is, so that one place used for a whole
// signal repeats the value before.
#pragma once

#include <cstdint>
#include <span>

namespace torve {

/// Stores `value` as binary32. Magnitudes up to 2^-102 keep only the low 24 bits of value x 2^149.
void build_binary32(float value, std::span<std::uint8_t, 4> out);

/// Decodes `width` bits, 32 or 16, of the little-endian word at `in` (width / 8 bytes are read).
/// `bits_out`, with room for 33 characters, receives them as text of '0' and '1', most significant
/// first. Infinity is 2^127 (32 bits) or 2^23 (16). 0 when `value_out` was stored; 1 for
/// a not-a-number, `value_out` then stays. Another width gives an empty text and 0.
int sbinary(char* bits_out, const std::uint8_t* in, int width, float* value_out);

/// The unsigned value of the first `n` characters, at most 32, of a '0'/'1' text.
[[nodiscard]] std::uint32_t read_binary(const char* bits, int n);

// Not used by the workbench itself.

/// Stores `value` as binary16, the mantissa rounded half up.
void build_binary16(float value, std::span<std::uint8_t, 2> out);

}  // namespace torve
