// The 24 Polish and Scandinavian letters that the program keeps at the codes 1 to 24.
#pragma once

#include <cstdint>

#include "pcf_font.hpp"

namespace torve {

inline constexpr int national_letter_count = 24;

/// The Unicode code point of the letter at `code`, 1 to 24.
[[nodiscard]] std::uint32_t national_letter(int code);

/// The letter at `code`, made from a base letter of `face` (8 pixels wide, two-pixel stems) and
/// its mark: the face has no national letters of its own.
[[nodiscard]] Cell composed_letter(int code, const CellMap& face);

}  // namespace torve
