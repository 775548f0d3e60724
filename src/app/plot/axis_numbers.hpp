// How the numbers along an axis are written.
#pragma once

#include <string>

namespace torve {

/// A number in at most `most_characters`: up to four significant digits, truncated; zeros at the
/// end go when nothing but them was cut off ("0.5", but "170.0" for 170.068). Whole digits are not
/// dropped while they fit; where they do not, or where fewer than two digits would be left of a
/// small number, an exponent takes over ("12e-4").
/// "0" for both zeros; empty when it is not finite or cannot be written in that room.
[[nodiscard]] std::string axis_number(double value, int most_characters);

/// The same with the digits behind the point cut off.
[[nodiscard]] std::string whole_axis_number(double value, int most_characters);

}  // namespace torve
