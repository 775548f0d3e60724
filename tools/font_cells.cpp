#include "font_cells.hpp"

#include <algorithm>
#include <bit>
#include <functional>
#include <map>
#include <numeric>

#include "national_letters.hpp"

namespace torve {

namespace {

// What a reader sees for a code without a glyph.
constexpr Cell replacement_box = {0x00, 0x7c, 0x44, 0x44, 0x44, 0x44, 0x44, 0x7c, 0x00, 0x00};

// Code points of the Greek letters in the order of symbol_letters.
constexpr char symbol_letters[] = "ABGDEZHQIKLMNXOPRSTUFCYWabgdezhqiklmnxoprVstufcyw";
constexpr char32_t greek_letters[] = U"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩαβγδεζηθικλμνξοπρςστυφχψω";
static_assert(std::size(symbol_letters) == std::size(greek_letters));

struct Sign {
  std::uint32_t place;
  std::uint32_t unicode;
};
constexpr Sign symbol_signs[] = {
    {0xa3, 0x2264}, {0xa5, 0x221e}, {0xac, 0x2190}, {0xae, 0x2192}, {0xb0, 0x00b0}, {0xb1, 0x00b1},
    {0xb3, 0x2265}, {0xb4, 0x00d7}, {0xb6, 0x2202}, {0xb8, 0x00f7}, {0xb9, 0x2260}, {0xbb, 0x2248},
    {0xd5, 0x220f}, {0xd6, 0x221a}, {0xe5, 0x2211}, {0xf2, 0x222b},
};

using CodeMap = std::map<std::uint32_t, std::uint32_t>;

CodeMap symbol_encoding() {
  CodeMap codes;
  for (std::size_t i = 0; i + 1 < std::size(symbol_letters); ++i) {
    codes[static_cast<std::uint32_t>(symbol_letters[i])] = greek_letters[i];
  }
  for (const Sign& sign : symbol_signs)
    codes[sign.place] = sign.unicode;
  return codes;
}

bool is_letter(int code) {
  return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
}

bool is_blank(int code) {
  return code == ' ' || code == 160;
}

bool is_printable(int code) {
  return (code > 32 && code < 127) || code > 160;
}

std::uint32_t unicode_of(int code, const CodeMap& remap) {
  if (code >= 1 && code <= national_letter_count) return national_letter(code);
  const auto plain = static_cast<std::uint32_t>(code);
  const auto found = remap.find(plain);
  return found == remap.end() ? plain : found->second;
}

Cell first_found(std::uint32_t unicode, const CellMap& face, const CellMap& fallback) {
  if (const auto in_face = face.find(unicode); in_face != face.end()) return in_face->second;
  if (const auto other = fallback.find(unicode); other != fallback.end()) return other->second;
  return replacement_box;
}

FontCells gathered(const CellMap& face, const CellMap& fallback, const CodeMap& remap) {
  FontCells cells = {};
  for (int code = 0; code < font_glyphs; ++code) {
    Cell& cell = cells[static_cast<std::size_t>(code)];
    const bool shown = is_printable(code) || (code >= 1 && code <= national_letter_count);
    if (is_blank(code)) continue;
    cell = shown ? first_found(unicode_of(code, remap), face, fallback) : replacement_box;
  }
  return cells;
}

unsigned all_ink(const Cell& cell) {
  return std::accumulate(cell.begin(), cell.end(), 0U, std::bit_or<>());
}

Cell centred(const Cell& cell) {
  Cell result = left_justified(cell);
  const int margin = std::max(0, (shared_ink_width - ink_end(result)) / 2);
  for (std::uint8_t& row : result)
    row = static_cast<std::uint8_t>(row >> margin);
  return result;
}

void make_proportional(FontCells& cells) {
  for (int code = 0; code < font_glyphs; ++code) {
    Cell& cell = cells[static_cast<std::size_t>(code)];
    cell = is_letter(code) ? left_justified(cell) : centred(cell);
  }
}

}  // namespace

Cell left_justified(const Cell& cell) {
  const int margin = std::countl_zero(static_cast<std::uint8_t>(all_ink(cell)));
  Cell result = cell;
  for (std::uint8_t& row : result)
    row = static_cast<std::uint8_t>(row << margin);
  return result;
}

int ink_end(const Cell& cell) {
  return 8 - std::countr_zero(static_cast<std::uint8_t>(all_ink(cell)));
}

FontCells fixed_cells(const CellMap& bold, const CellMap& fallback) {
  FontCells cells = gathered(bold, fallback, {});
  for (int code = 1; code <= national_letter_count; ++code) {
    cells[static_cast<std::size_t>(code)] = composed_letter(code, bold);
  }
  return cells;
}

FontCells proportional_cells(const CellMap& face, const CellMap& marks) {
  FontCells cells = gathered(face, {}, {});
  make_proportional(cells);
  for (const char mark : {'.', ',', ':', ';'}) {
    const auto code = static_cast<std::uint8_t>(mark);
    cells[code] = centred(marks.at(code));
  }
  return cells;
}

FontCells greek_cells(const CellMap& face) {
  FontCells cells = gathered(face, {}, symbol_encoding());
  make_proportional(cells);
  return cells;
}

}  // namespace torve
