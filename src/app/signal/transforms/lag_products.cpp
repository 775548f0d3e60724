#include "app/signal/transforms/lag_products.hpp"

#include <algorithm>
#include <bit>
#include <utility>

#include "app/signal/transforms/long_transform.hpp"

namespace torve::transforms {

namespace {

/// A part of a signal is worth while when it is a few times as long as there are lags.
constexpr std::size_t parts_of_lags = 4;
constexpr std::size_t least_part = 1 << 18;

/// Z, the transform of a + i b, becomes conj(A) B, the transform of the sums of products: with Z'
/// at the opposite frequency 2 conj(A) = conj(Z) + Z' and 2 i B = Z - conj(Z').
void multiply(const LongTransform& transform, const Parts& z) {
  for (std::size_t f = 0; f < transform.size(); ++f) {
    const std::size_t g = transform.opposite(f);
    if (g < f) continue;
    const double a_re = (z.re[f] + z.re[g]) / 2;
    const double a_im = (z.im[g] - z.im[f]) / 2;
    const double b_re = (z.im[f] + z.im[g]) / 2;
    const double b_im = (z.re[g] - z.re[f]) / 2;
    z.re[f] = z.re[g] = a_re * b_re - a_im * b_im;
    z.im[f] = a_re * b_im + a_im * b_re;
    z.im[g] = g == f ? 0 : -z.im[f];
  }
}

class LagProducts {
 public:
  LagProducts(const Centred& a, const Centred& b, std::size_t back, std::size_t ahead)
      : a_(a),
        b_(b),
        back_(back),
        sums_(back + ahead + 1),
        part_(part_size()),
        transform_(circle_size(ahead)),
        re_(transform_.size()),
        im_(transform_.size()) {}

  std::vector<double> run() {
    for (std::size_t begin = 0; begin < a_.values.size(); begin += part_)
      add_part(begin);
    return std::move(sums_);
  }

 private:
  [[nodiscard]] std::size_t part_size() const {
    const std::size_t all = a_.values.size();
    const std::size_t enough = std::max(parts_of_lags * sums_.size(), least_part);
    // A power of two in all.
    const std::size_t part = std::bit_ceil(enough) - sums_.size();
    return all > 2 * part ? part : all;
  }

  /// So many places that no two lags meet.
  [[nodiscard]] std::size_t circle_size(std::size_t ahead) const {
    const std::size_t all = a_.values.size();
    if (part_ < all) return part_ + sums_.size();
    return std::max(all + ahead, std::min(b_.values.size(), all + ahead) + back_);
  }

  /// Those of a(begin .. begin + part - 1). Both signals begin with place 0; what of b comes before
  /// goes to the end of the circle.
  void add_part(std::size_t begin) {
    const std::size_t size = transform_.size();
    std::ranges::fill(re_, 0);
    std::ranges::fill(im_, 0);
    const std::size_t end = std::min(begin + part_, a_.values.size());
    for (std::size_t i = begin; i < end; ++i)
      re_[i - begin] = static_cast<double>(a_.values[i]) - a_.mean;
    const std::size_t first = begin - std::min(begin, back_);
    const std::size_t ahead = sums_.size() - 1 - back_;
    for (std::size_t j = first; j < std::min(end + ahead, b_.values.size()); ++j)
      im_[(j + size - begin) % size] = static_cast<double>(b_.values[j]) - b_.mean;
    const Parts z = {re_.data(), im_.data()};
    transform_.forward(z);
    multiply(transform_, z);
    transform_.backward(z);
    for (std::size_t k = 0; k < sums_.size(); ++k)
      sums_[k] += re_[(k + size - back_) % size] / static_cast<double>(size);
  }

  Centred a_, b_;
  std::size_t back_;
  std::vector<double> sums_;
  std::size_t part_;
  LongTransform transform_;
  std::vector<double> re_, im_;
};

}  // namespace

std::vector<double> lag_products(const Centred& a, const Centred& b, std::size_t back,
                                 std::size_t ahead) {
  return LagProducts(a, b, back, ahead).run();
}

}  // namespace torve::transforms
