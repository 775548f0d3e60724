#include "pair_advances.hpp"

#include <algorithm>
#include <bit>

namespace torve {

namespace {

constexpr int gap = 1;

const Cell& cell_of(const FontCells& cells, char letter) {
  return cells[static_cast<std::uint8_t>(letter)];
}

/// The letter of a class; 'a' for class 0 and for the classes that no letter has.
char letter_of(int pair_class) {
  if (pair_class < 26) return static_cast<char>('a' + pair_class);
  if (pair_class >= 30 && pair_class < 56) return static_cast<char>('A' + pair_class - 30);
  return 'a';
}

bool is_shared(int pair_class) {
  return letter_of(pair_class) == 'a';
}

int first_column(std::uint8_t row) {
  return std::countl_zero(row);
}

int end_column(std::uint8_t row) {
  return 8 - std::countr_zero(row);
}

/// Whether the ink of `right`, placed `advance` pixels after `left`, stays two clear columns away
/// in every row and one from its diagonal neighbours.
bool keeps_clear(const Cell& left, const Cell& right, int advance) {
  for (int y = 0; y < cell_rows; ++y) {
    const std::uint8_t ink = left[static_cast<std::size_t>(y)];
    if (ink == 0) continue;
    for (int other = std::max(y - 1, 0); other <= std::min(y + 1, cell_rows - 1); ++other) {
      const std::uint8_t facing = right[static_cast<std::size_t>(other)];
      const int needed = other == y ? gap + 1 : gap;
      if (facing != 0 && advance + first_column(facing) - end_column(ink) < needed) return false;
    }
  }
  return true;
}

int shared_advance(const FontCells& cells) {
  int widest = ink_end(cell_of(cells, 'a'));
  for (char digit = '0'; digit <= '9'; ++digit) {
    widest = std::max(widest, ink_end(cell_of(cells, digit)));
  }
  return widest + gap;
}

int letter_advance(const Cell& left, const Cell& right) {
  const int closer = ink_end(left) + gap - 1;
  return keeps_clear(left, right, closer) ? closer : closer + 1;
}

}  // namespace

PairAdvances pair_advances(const FontCells& cells) {
  PairAdvances table = {};
  const int shared = shared_advance(cells);
  for (int first = 0; first < pair_classes; ++first) {
    const Cell& left = cell_of(cells, letter_of(first));
    for (int second = 0; second < pair_classes; ++second) {
      int advance = shared;
      if (!is_shared(first)) {
        advance = is_shared(second) ? ink_end(left) + gap
                                    : letter_advance(left, cell_of(cells, letter_of(second)));
      }
      table[static_cast<std::size_t>(first * pair_classes + second)] =
          static_cast<std::int8_t>(advance);
    }
  }
  return table;
}

}  // namespace torve
