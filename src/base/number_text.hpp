// Numbers as text, with the results of the C library's "%d" and "%f" in the C locale, whatever
// the locale of the process is. What files usually hold takes a short way of its own; every other
// text or value goes to the general conversion, so that only the time differs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace torve {

/// The most characters that put_fixed6 writes (-DBL_MAX).
inline constexpr std::size_t longest_fixed6 = 320;
/// The most characters that put_decimal writes.
inline constexpr std::size_t longest_decimal = 20;

/// Writes `value` as "%f" would and returns the end of the text (no terminator). `out` must have
/// room for longest_fixed6 characters, or 48 if the value comes from a float.
char* put_fixed6(char* out, double value);

/// Whether "%f" writes both alike.
[[nodiscard]] bool same_fixed6(double a, double b);

/// Writes `value` as "%d" would and returns the end of the text (no terminator).
char* put_decimal(char* out, std::int64_t value);

/// Reads [-]digits[.digits] of at most 15 digits at `*text` and moves `*text` behind it; `value`
/// is what "%f" stores. False for every other text, and for the rare one whose rounding needs more
/// care: `value` is untouched then, `*text` is anywhere. The text must end with a character that
/// belongs to no number.
[[nodiscard]] bool scan_plain_float(const char** text, float* value);

/// sscanf(line, "%*d %f", value): whether a value was stored.
bool scan_sample_line(const char* line, float* value);

/// sscanf "%d"; beyond the range of int its nearest end. Nothing where "%d" stores nothing.
[[nodiscard]] std::optional<int> read_int(const std::string& text);

/// sscanf "%f" (the infinities beyond the range). Nothing where "%f" stores nothing.
[[nodiscard]] std::optional<float> read_float(const std::string& text);

}  // namespace torve
