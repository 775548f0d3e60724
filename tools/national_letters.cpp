#include "national_letters.hpp"

#include <array>

namespace torve {

namespace {

// Capitals fill rows 1 to 7 (or 0 to 7); one row is taken out to make room for the mark above.
constexpr int keep_all_rows = 0;

struct MarkRow {
  int row;
  std::uint8_t pixels;
};

struct NationalLetter {
  int code;
  std::uint32_t unicode;
  char base;
  int dropped_row;  // keep_all_rows for letters whose mark needs no room
  std::array<MarkRow, 4> mark;
};

// The pixels are added to the rows of the base letter; a row of 0 adds nothing.
constexpr std::array<NationalLetter, national_letter_count> letters = {{
    {1,
     0x142,
     'l',
     keep_all_rows,
     {{{2, 0b00000100}, {3, 0b00001100}, {4, 0b00110000}, {5, 0b00100000}}}},
    {2, 0x105, 'a', keep_all_rows, {{{8, 0b00000110}, {9, 0b00000011}}}},
    {3, 0x119, 'e', keep_all_rows, {{{8, 0b00001100}, {9, 0b00000110}}}},
    {4, 0x107, 'c', keep_all_rows, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {5, 0x15b, 's', keep_all_rows, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {6, 0x17a, 'z', keep_all_rows, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {7, 0x17c, 'z', keep_all_rows, {{{0, 0b00011000}, {1, 0b00011000}}}},
    {8, 0x0f3, 'o', keep_all_rows, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {9, 0x141, 'L', keep_all_rows, {{{3, 0b00000100}, {4, 0b00011000}, {5, 0b10000000}}}},
    {10, 0x104, 'A', keep_all_rows, {{{8, 0b00000110}, {9, 0b00000011}}}},
    {11, 0x118, 'E', keep_all_rows, {{{8, 0b00000110}, {9, 0b00000011}}}},
    {12, 0x106, 'C', 3, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {13, 0x15a, 'S', 3, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {14, 0x179, 'Z', 4, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {15, 0x17b, 'Z', 4, {{{0, 0b00011000}}}},
    {16, 0x144, 'n', keep_all_rows, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {17, 0x0e5, 'a', keep_all_rows, {{{0, 0b00111000}, {1, 0b00101000}, {2, 0b00111000}}}},
    {18, 0x0e4, 'a', keep_all_rows, {{{0, 0b01100110}, {1, 0b01100110}}}},
    {19, 0x0f6, 'o', keep_all_rows, {{{0, 0b01100110}, {1, 0b01100110}}}},
    {20, 0x0c5, 'A', 3, {{{0, 0b00011000}, {1, 0b00100100}, {2, 0b00011000}}}},
    {21, 0x0c4, 'A', 3, {{{0, 0b01100110}}}},
    {22, 0x0d6, 'O', 4, {{{0, 0b01100110}}}},
    {23, 0x0d3, 'O', 4, {{{0, 0b00001100}, {1, 0b00011000}}}},
    {24, 0x143, 'N', 6, {{{0, 0b00001100}, {1, 0b00011000}}}},
}};

constexpr bool in_order_of_code() {
  for (int i = 0; i < national_letter_count; ++i) {
    if (letters[static_cast<std::size_t>(i)].code != i + 1) return false;
  }
  return true;
}
static_assert(in_order_of_code());

const NationalLetter& letter_at(int code) {
  return letters.at(static_cast<std::size_t>(code - 1));
}

Cell without_row(const Cell& base, int dropped) {
  Cell cell = base;
  for (int row = dropped; row > 0; --row) {
    cell[static_cast<std::size_t>(row)] = base[static_cast<std::size_t>(row - 1)];
  }
  cell[0] = 0;
  return cell;
}

}  // namespace

std::uint32_t national_letter(int code) {
  return letter_at(code).unicode;
}

Cell composed_letter(int code, const CellMap& face) {
  const NationalLetter& letter = letter_at(code);
  const Cell& base = face.at(static_cast<std::uint8_t>(letter.base));
  Cell cell = letter.dropped_row == keep_all_rows ? base : without_row(base, letter.dropped_row);
  for (const MarkRow& mark : letter.mark) {
    std::uint8_t& row = cell[static_cast<std::size_t>(mark.row)];
    row = static_cast<std::uint8_t>(row | mark.pixels);
  }
  return cell;
}

}  // namespace torve
