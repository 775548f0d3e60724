// How the numbers along an axis are written: along x truncated, along y rounded.
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

/// Rounded to so many decimals, 0 .. 9; empty when it is not finite.
[[nodiscard]] std::string fixed_axis_number(double value, int decimals);

/// The nearest value that a text of at most `most_characters` can say. Zeros at the end go when the
/// text is exact, the zero before the point when there is no room for it; an exponent is taken only
/// where it is nearer. Empty when the value is not finite or nothing within half of it can be said.
[[nodiscard]] std::string nearest_axis_number(double value, int most_characters);

/// The numbers at the two ends of an axis, written alike.
struct AxisEnds {
  std::string top, bottom;
};

/// Both in `most_characters`, less one for a sign at either end while that leaves two digits at
/// least (0.01 .. 9999); otherwise each as near as it can be said, with an exponent at both ends or
/// at none where that costs no more than 0.5 %.
[[nodiscard]] AxisEnds axis_ends(double top, double bottom, int most_characters);

}  // namespace torve
