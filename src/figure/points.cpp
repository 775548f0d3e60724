#include "figure/points.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "app/plot/decibels.hpp"
#include "app/plot/running_sums.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "base/files.hpp"

namespace torve {

namespace {

constexpr double pane_width = 763;  // pixels of a pane's curve, by which xsc is to be understood

// An open input behind its header and the samples that are skipped.
struct OpenInput {
  FilePtr file;
  std::optional<SampleReader> reader = {};
  int spectrum_size = 1;
};

Cause skip_to_start(const FigureInput& input, OpenInput& open) {
  open.reader.emplace(open.file.get(), pane_line_size);
  if (input.source == FigureSource::spectrum) {
    const auto header = open.reader->next_line();
    if (!header) return Cause::nothing_to_draw;
    open.spectrum_size = std::max(1, spectrum_size(*header).value_or(1));
  }
  for (double skipped = 0; skipped + 1 <= input.start; ++skipped) {
    if (!open.reader->skip_line()) return Cause::start_behind_end;
  }
  return Cause::done;
}

Outcome open_input(const FigureInput& input, OpenInput* open) {
  open->file = open_regular_file(input.name, "rb");
  if (!open->file) return input_failure(input.name);
  return {.cause = skip_to_start(input, *open), .name = input.name};
}

double most_samples_of(const FigureInput& input) {
  return input.samples.value_or(std::numeric_limits<double>::infinity());
}

// Sums over `step` samples, each sample starting one, in pieces.
class PointReader {
 public:
  PointReader(SampleReader& reader, int step, double most)
      : reader_(reader), step_(step), left_(most) {}

  // The next points; none at the end.
  std::span<const float> next() {
    values_.erase(values_.begin(), values_.begin() + static_cast<std::ptrdiff_t>(given_));
    const std::size_t ahead = static_cast<std::size_t>(std::max(step_, 1)) - 1;
    const std::size_t piece = std::max(least_piece, ahead);
    fill(piece + ahead);
    given_ = std::min(piece, values_.size());
    if (step_ == 1) return values_;
    sums_ = running_sums(values_, step_);
    return std::span(sums_).first(given_);
  }

 private:
  static constexpr std::size_t least_piece = 1 << 16;

  void fill(std::size_t wanted) {
    while (values_.size() < wanted && left_ >= 1) {
      const std::size_t before = values_.size();
      const double room = std::min<double>(left_, static_cast<double>(wanted - before));
      const std::size_t asked = std::min(least_piece, static_cast<std::size_t>(room));
      values_.resize(before + asked);
      const std::size_t got = reader_.read(std::span(values_).subspan(before));
      values_.resize(before + got);
      left_ = got < asked ? 0 : left_ - static_cast<double>(got);
    }
  }

  SampleReader& reader_;
  int step_;
  double left_;            // samples that may be read yet
  std::size_t given_ = 0;  // of `values_`, as points
  std::vector<float> values_;
  std::vector<float> sums_;
};

// Takes the points one after the other.
class Collector {
 public:
  Collector(const PointPlaces& places, const AxisRange& range, int columns, SeenPoints& seen)
      : seen_(seen), range_(range), unit_(places.unit), first_(places.first) {
    const double length = range.right - range.left;
    per_unit_ = columns / length;
    if (length / places.unit > columns) seen_.columns.resize(static_cast<std::size_t>(columns));
  }

  void take(std::span<const float> points) {
    for (const float point : points) {
      const double value = static_cast<double>(point);
      const double place = first_ + static_cast<double>(index_++) * unit_;
      if (!std::isfinite(value)) continue;
      if (value > 0) seen_.smallest = std::min(seen_.smallest, value);
      seen_.largest = std::max(seen_.largest, std::fabs(value));
      if (is_behind_) continue;
      if (place < range_.left) {
        seen_.points.assign(seen_.columns.empty() ? 1 : 0, {place, value});
        continue;
      }
      is_behind_ = place > range_.right + unit_ * nudge;
      if (is_behind_ && !seen_.columns.empty()) continue;
      if (seen_.columns.empty()) seen_.points.push_back({place, value});
      if (is_behind_) continue;
      seen_.low = std::min(seen_.low, value);
      seen_.high = std::max(seen_.high, value);
      if (!seen_.columns.empty()) add_to_column(place, value);
      last_ = value;
    }
  }

 private:
  static constexpr double nudge = 1e-6;

  void add_to_column(double place, double value) {
    const auto column = std::min(static_cast<std::size_t>((place - range_.left) * per_unit_),
                                 seen_.columns.size() - 1);
    ColumnEnds& ends = seen_.columns[column];
    if (ends.is_empty) ends = {std::min(value, last_), std::max(value, last_), false};
    ends.low = std::min(ends.low, value);
    ends.high = std::max(ends.high, value);
  }

  SeenPoints& seen_;
  AxisRange range_;
  double unit_, first_, per_unit_;
  std::int64_t index_ = 0;
  bool is_behind_ = false;
  double last_ = std::numeric_limits<double>::quiet_NaN();  // min and max then give the other one
};

}  // namespace

Outcome find_places(const FigureInput& input, PointPlaces* places) {
  OpenInput open;
  Outcome opened = open_input(input, &open);
  if (!opened.is_done()) return opened;
  const bool is_spectrum = input.source == FigureSource::spectrum;
  places->unit =
      is_spectrum ? static_cast<double>(sampling_rate) / open.spectrum_size : 1.0 / sampling_rate;
  const double left = input.from.value_or(std::max(input.start, 0.0));
  const double first = std::floor(std::max(input.start, 0.0)) - std::min(input.start, 0.0);
  double right = left + pane_width / input.xsc.value_or(1);
  if (!input.xsc) {
    double count = 0;
    while (count + 1 <= most_samples_of(input) && open.reader->skip_line())
      ++count;
    right = std::max(first + count - 1, left + 1);
  }
  places->first = first * places->unit;
  places->range = {left * places->unit, right * places->unit};
  return {};
}

Outcome read_points(const FigureInput& input, const PointPlaces& places, const AxisRange& range,
                    int columns, SeenPoints* seen) {
  OpenInput open;
  Outcome opened = open_input(input, &open);
  if (!opened.is_done()) return opened;
  PointReader reader(*open.reader, input.step, most_samples_of(input));
  Collector collector(places, range, columns, *seen);
  bool has_some = false;
  for (auto points = reader.next(); !points.empty(); points = reader.next()) {
    collector.take(points);
    has_some = true;
  }
  return {.cause = has_some ? Cause::done : Cause::nothing_to_draw, .name = input.name};
}

void use_decibels(SeenPoints& seen) {
  const double largest = seen.largest > 0 ? seen.largest : 1;
  const float powers[] = {static_cast<float>(seen.largest), static_cast<float>(seen.smallest)};
  const double floor = -decibel_range(powers);
  const auto level = [=](double value) {
    return value > 0 ? std::max(floor, decibels_below(value, largest)) : floor;
  };
  for (Point& point : seen.points)
    point.y = level(point.y);
  for (ColumnEnds& ends : seen.columns)
    ends = {level(ends.low), level(ends.high), ends.is_empty};
  seen.low = floor;
  seen.high = 0;
}

}  // namespace torve
