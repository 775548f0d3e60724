#include "app/plot/dense_curve.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "app/signal/clones.hpp"
#include "draw/lines.hpp"

namespace torve {

namespace {

constexpr std::size_t lanes = 32;  // ranges side by side

// Comparisons with what is no number are false, so it is passed over.
TORVE_CLONES void range_of_blocks(const float* values, std::size_t blocks, float* low,
                                  float* high) {
  float lows[lanes];
  float highs[lanes];
  for (std::size_t b = 0; b < lanes; ++b) {
    lows[b] = low[b];
    highs[b] = high[b];
  }
  for (std::size_t k = 0; k < blocks; ++k, values += lanes) {
    for (std::size_t b = 0; b < lanes; ++b) {
      lows[b] = values[b] < lows[b] ? values[b] : lows[b];
      highs[b] = values[b] > highs[b] ? values[b] : highs[b];
    }
  }
  for (std::size_t b = 0; b < lanes; ++b) {
    low[b] = lows[b];
    high[b] = highs[b];
  }
}

class DenseCurve {
 public:
  DenseCurve(std::span<const float> points, const CurvePlace& place)
      : points_(points), place_(place) {}

  void draw() {
    const std::size_t before = first_at(place_.left);
    std::size_t begin = before;
    if (before > 0 && before <= points_.size()) enter_from(before - 1);
    for (int column = place_.left; column <= place_.right && begin < points_.size(); ++column) {
      const std::size_t end = std::max(begin, first_at(column + 1));
      if (end > begin) draw_column(column, points_.subspan(begin, end - begin));
      begin = end;
    }
    if (begin < points_.size() && begin > 0) leave_to(begin);
  }

 private:
  [[nodiscard]] double x_of(std::size_t index) const {
    return place_.left + place_.shift + static_cast<double>(index) * place_.spacing;
  }

  // The first point at a column or right of it.
  [[nodiscard]] std::size_t first_at(int column) const {
    const double index = std::ceil((column - place_.left - place_.shift) / place_.spacing);
    if (!(index > 0)) return 0;
    return static_cast<std::size_t>(std::min(index, static_cast<double>(points_.size())));
  }

  // The row where the segment from point `index` to the next one crosses column x.
  [[nodiscard]] int row_between(std::size_t index, double x) const {
    const double part = (x - x_of(index)) / place_.spacing;
    const double from = static_cast<double>(points_[index]);
    const double to = static_cast<double>(points_[index + 1]);
    return point_row(static_cast<float>(from + part * (to - from)), place_);
  }

  void enter_from(std::size_t index) {
    if (index + 1 >= points_.size()) return;
    drawn_to(place_.left, row_between(index, place_.left));
  }

  void leave_to(std::size_t index) { drawn_to(place_.right, row_between(index - 1, place_.right)); }

  // A line from what was drawn last.
  void drawn_to(int column, int row) {
    if (begun_) draw_line(column_, row_, column, row, place_.colour, place_.target);
    begun_ = true;
    column_ = column;
    row_ = row;
  }

  void draw_column(int column, std::span<const float> points) {
    drawn_to(column, point_row(points.front(), place_));
    if (points.size() == 1) return;
    const ValueRange range = value_range(points);
    draw_line(column, point_row(range.largest, place_), column, point_row(range.smallest, place_),
              place_.colour, place_.target);
    row_ = point_row(points.back(), place_);
  }

  std::span<const float> points_;
  CurvePlace place_;
  bool begun_ = false;
  int column_ = 0, row_ = 0;
};

}  // namespace

ValueRange value_range(std::span<const float> values) {
  constexpr float farthest = std::numeric_limits<float>::infinity();
  float low[lanes];
  float high[lanes];
  std::fill_n(low, lanes, farthest);
  std::fill_n(high, lanes, -farthest);
  const std::size_t blocks = values.size() / lanes;
  range_of_blocks(values.data(), blocks, low, high);
  ValueRange range = {*std::min_element(low, low + lanes), *std::max_element(high, high + lanes)};
  for (const float value : values.subspan(blocks * lanes)) {
    if (value < range.smallest) range.smallest = value;
    if (value > range.largest) range.largest = value;
  }
  return range.smallest > range.largest ? ValueRange{} : range;
}

void draw_dense_curve(std::span<const float> points, const CurvePlace& place) {
  if (!(place.spacing > 0) || points.empty()) return;
  DenseCurve(points, place).draw();
}

}  // namespace torve
