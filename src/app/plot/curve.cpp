#include "app/plot/curve.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/saturate.hpp"
#include "draw/lines.hpp"

namespace torve {

namespace {

// Segments within one column share their end points, so together they cover one run of rows. A
// pane of 100,000 samples has dozens of them in each column; drawing the run once paints the same
// pixels in a fraction of the time.
class ColumnRun {
 public:
  ColumnRun(int colour, int target) : colour_(colour), target_(target) {}

  void add(int column, int y1, int y2) {
    const auto [low, high] = std::minmax(y1, y2);
    if (open_ && column == column_) {
      low_ = std::min(low_, low);
      high_ = std::max(high_, high);
      return;
    }
    draw();
    open_ = true;
    column_ = column;
    low_ = low;
    high_ = high;
  }

  void draw() {
    if (open_) draw_line(column_, low_, column_, high_, colour_, target_);
    open_ = false;
  }

 private:
  int colour_, target_;
  bool open_ = false;
  int column_ = 0, low_ = 0, high_ = 0;
};

}  // namespace

int point_row(float value, const CurvePlace& place) {
  const int height =
      saturate_to_int(static_cast<double>(value) * place.scale * place.magnification);
  const std::int64_t row = std::int64_t{place.zero} - height;
  return static_cast<int>(std::clamp<std::int64_t>(row, place.top, place.bottom));
}

void draw_curve(std::span<const float> points, const CurvePlace& place) {
  ColumnRun run(place.colour, place.target);
  double x = place.left + place.shift;
  int last_column = 0;
  int last_row = 0;
  for (std::size_t i = 0; i < points.size() && x >= place.left && x <= place.right; ++i) {
    const int column = saturate_to_int(x);
    const int row = point_row(points[i], place);
    if (i > 0 && column == last_column && place.target == target_screen) {
      run.add(column, last_row, row);
    } else if (i > 0) {
      draw_line(last_column, last_row, column, row, place.colour, place.target);
    }
    last_column = column;
    last_row = row;
    x += place.spacing;
  }
  run.draw();
}

}  // namespace torve
