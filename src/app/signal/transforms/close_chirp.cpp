#include "app/signal/transforms/close_chirp.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/clones.hpp"

namespace torve::transforms {

namespace {

constexpr double rest_slack = convolution_slack + 5 * unit;
constexpr double filter_norm = side;
constexpr double filter_unit = 0x1p-16;
constexpr double filter_rest_norm = filter_unit * side;  // at most, of 4096 values

/// `value` to the nearest multiple of unit, a power of two.
TORVE_INLINE double coarse(double value, double unit) {
  const double rounder = 0x1.8p52 * unit;
  return (value + rounder) - rounder;
}

TORVE_CLONES void multiply(const SplitWave& x, const SplitWave& y, SplitWave& z) {
  for (int f = 0; f < points; ++f) {
    const double y_re = y.coarse.re[f] + y.rest.re[f];
    const double y_im = y.coarse.im[f] + y.rest.im[f];
    z.coarse.re[f] = x.coarse.re[f] * y.coarse.re[f] - x.coarse.im[f] * y.coarse.im[f];
    z.coarse.im[f] = x.coarse.re[f] * y.coarse.im[f] + x.coarse.im[f] * y.coarse.re[f];
    z.rest.re[f] = (x.coarse.re[f] * y.rest.re[f] - x.coarse.im[f] * y.rest.im[f]) +
                   (x.rest.re[f] * y_re - x.rest.im[f] * y_im);
    z.rest.im[f] = (x.coarse.re[f] * y.rest.im[f] + x.coarse.im[f] * y.rest.re[f]) +
                   (x.rest.re[f] * y_im + x.rest.im[f] * y_re);
  }
}

TORVE_CLONES void take_sums(const SplitWave& part, double unit, CloseTile& sums) {
  for (int s = 0; s < half; ++s) {
    sums.re[s] = coarse(part.coarse.re[s] * (1.0 / points), unit);
    sums.im[s] = coarse(part.coarse.im[s] * (1.0 / points), unit);
    sums.re_rest[s] = part.rest.re[s] * (1.0 / points);
    sums.im_rest[s] = part.rest.im[s] * (1.0 / points);
  }
}

double in_one(const DoubleDouble& a) {
  return a.high + a.low;
}

/// The power of two that leaves a transform of a block with this norm a quarter of a unit: half of
/// what there may be, for the norm of its coarse part and the logarithm's rounding.
double unit_for(double norm) {
  const double least = 4 * convolution_slack * filter_norm / filter_unit * norm;
  return least > 0 ? std::exp2(std::ceil(std::log2(least))) : 1;
}

}  // namespace

CloseChirp::CloseChirp(int size, const Values& a, const Values& b)
    : blocks_(parts_of(a)), filters_(static_cast<std::size_t>(blocks_ + parts_of(b) - 1)) {
  const int end_a = a.first + blocks_ * half;
  const int end_b = b.first + parts_of(b) * half;
  turns_ = chirp_turns(size, static_cast<std::size_t>(std::max(end_a, end_b)) + 1);
  for (std::size_t d = 0; d < filters_.size(); ++d) {
    const int from = (static_cast<int>(d) + 1 - blocks_) * half + b.first - a.first;
    SplitWave& wave = filters_[d];
    for (int v = 0; v < points; ++v) {
      const SplitSineCosine& w = (*this)(from + (v < half ? v : v - points));
      wave.coarse.re[v] = coarse(w.cosine, filter_unit);
      wave.coarse.im[v] = -coarse(w.sine, filter_unit);
      wave.rest.re[v] = (w.cosine - wave.coarse.re[v]) + w.cosine_rest;
      wave.rest.im[v] = -((w.sine + wave.coarse.im[v]) + w.sine_rest);
    }
    transform(wave.coarse);
    transform(wave.rest);
  }
}

double CloseChirp::begin(CloseBlock& block, double squares) {
  const double norm = std::sqrt(squares);
  block.unit = unit_for(norm);
  const double rest_norm = norm > 0 ? block.unit * std::sqrt(half / 2.0) : 0;
  return rest_slack * (norm * filter_rest_norm + rest_norm * filter_norm);
}

void CloseChirp::set(CloseBlock& block, int place, const DoubleDouble& re, const DoubleDouble& im) {
  SplitWave& values = block.values;
  values.coarse.re[place] = coarse(re.high, block.unit);
  values.coarse.im[place] = coarse(im.high, block.unit);
  values.rest.re[place] = (re.high - values.coarse.re[place]) + re.low;
  values.rest.im[place] = (im.high - values.coarse.im[place]) + im.low;
}

void CloseChirp::end(CloseBlock& block) {
  transform(block.values.coarse);
  transform(block.values.rest);
}

void CloseChirp::convolve(const CloseBlock& block, int number, int tile, CloseTile& sums) {
  multiply(block.values, filters_[static_cast<std::size_t>(tile - number + blocks_ - 1)], part_);
  transform_back(part_.coarse);
  transform_back(part_.rest);
  take_sums(part_, block.unit * filter_unit, sums);
}

TORVE_CLONES void add(const CloseTile& part, CloseTile& sums) {
  for (int s = 0; s < half; ++s) {
    const DoubleDouble re = exact_sum(sums.re[s], part.re[s]);
    const DoubleDouble im = exact_sum(sums.im[s], part.im[s]);
    sums.re[s] = re.high;
    sums.im[s] = im.high;
    sums.re_rest[s] += re.low + part.re_rest[s];
    sums.im_rest[s] += im.low + part.im_rest[s];
  }
}

double real_product(const CloseTile& sums, int s, const SplitSineCosine& w) {
  return in_one(sum_of_products({sums.re[s], sums.re_rest[s]}, {w.cosine, w.cosine_rest},
                                {-sums.im[s], -sums.im_rest[s]}, {w.sine, w.sine_rest}));
}

double imaginary_product(const CloseTile& sums, int s, const SplitSineCosine& w) {
  return in_one(sum_of_products({sums.re[s], sums.re_rest[s]}, {w.sine, w.sine_rest},
                                {sums.im[s], sums.im_rest[s]}, {w.cosine, w.cosine_rest}));
}

}  // namespace torve::transforms
