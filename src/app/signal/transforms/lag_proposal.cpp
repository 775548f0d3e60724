#include "app/signal/transforms/lag_proposal.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/transforms/transform.hpp"
#include "base/progress.hpp"

namespace torve::transforms {

namespace {

constexpr int group = 4;  // blocks between two borders at which partial sums are known
constexpr int half_group = group / 2 * half;
constexpr double margin = 1.01;
constexpr std::size_t least_lags = 2048;  // from here on proposals pay

/// The lower half of the transform of real values, and the middle.
struct Spectrum {
  alignas(64) double re[half + 8];
  alignas(64) double im[half + 8];
};

/// Half a transform's lags.
struct Tile {
  alignas(64) double sum[half];
  alignas(64) double sizes[half];  // bounds the |s| of all additions and all |p|
};

/// Prefix sums of squares, P(m) of the first m, and theirs, Q(m) = P(0) + .. + P(m-1), from some
/// value on; what rounding may have taken from sums weighted by up to the size of the signal.
struct Squares {
  const double* p;
  const double* q;
  double slack;
};

/// At least count x(0)^2 + (count-1) x(1)^2 + .. + 1 x(count-1)^2, x beginning at `from`.
TORVE_INLINE double falling(const Squares& x, int from, int count) {
  return x.q[from + count + 1] - x.q[from + 1] - count * x.p[from] + x.slack;
}

/// At least 1 x(0)^2 + 2 x(1)^2 + .. + count x(count-1)^2.
TORVE_INLINE double rising(const Squares& x, int from, int count) {
  return count * x.p[from + count] - (x.q[from + count] - x.q[from]) + x.slack;
}

/// A group's terms: a from its first, b from where the tile's first lag meets it.
struct Terms {
  double left;  // of the first lag
  Squares a;
  Squares b;
};

/// conj(x) y, added.
TORVE_CLONES void add_products(const Spectrum& x, const Spectrum& y, Spectrum& z) {
  for (int f = 0; f < half + 8; ++f) {
    z.re[f] += x.re[f] * y.re[f] + x.im[f] * y.im[f];
    z.im[f] += x.re[f] * y.im[f] - x.im[f] * y.re[f];
  }
}

/// Adds a group's part of the sums; the products are bounded for 32 lags at a time, so b counts 31
/// values more. A weight is one more than the number of |s| that a product is part of: the last is
/// its own rounding. The rounding of `after` is one |s| more.
TORVE_CLONES void add_group(Tile& tile, const double* part, const Terms& terms) {
  constexpr int run = 32;
  const double a1 = falling(terms.a, 0, half_group + 1);
  const double a2 = rising(terms.a, half_group - 1, half_group + 1);
  for (int first = 0; first < half; first += run) {
    const double b1 = falling(terms.b, first, half_group + run);
    const double b2 = rising(terms.b, first + half_group - 1, half_group + run);
    const double products = std::sqrt(a1 * b1) + std::sqrt(a2 * b2);
    for (int l = first; l < first + run; ++l) {
      const double left = terms.left - l;
      const double terms1 = std::min(std::max(left, 0.0), double{half_group});
      const double terms2 = std::min(std::max(left - half_group, 0.0), double{half_group});
      const double before = tile.sum[l];
      const double after = before + part[l] * (1.0 / points);
      tile.sum[l] = after;
      tile.sizes[l] += terms1 * std::fabs(before) + (terms2 + 1) * std::fabs(after) + products;
    }
  }
}

/// terms: of the first lag; error: of the transforms.
TORVE_CLONES void prove(const Tile& tile, double error, double terms, int count, float* means,
                        std::uint8_t* open) {
  for (int l = 0; l < count; ++l) {
    // The ends of the sum are rounded themselves, which |sum| covers.
    const double sizes = tile.sizes[l] + 4 * std::fabs(tile.sum[l]);
    const double bound = margin * (unit * sizes + error);
    const auto low = static_cast<float>((tile.sum[l] - bound) / (terms - l));
    const auto high = static_cast<float>((tile.sum[l] + bound) / (terms - l));
    means[l] = high;
    open[l] = !same_text(low, high);
  }
}

/// One of the signals, in blocks.
class Blocks {
 public:
  /// `ahead` blocks of nothing are known behind the last.
  Blocks(std::span<const double> values, int ahead)
      : count_(static_cast<int>((values.size() + half - 1) / half)),
        p_(static_cast<std::size_t>((count_ + ahead) * half)),
        q_(p_.size()),
        spectra_(static_cast<std::size_t>(count_)) {
    for (std::size_t i = 1; i < p_.size(); ++i) {
      p_[i] = p_[i - 1] + (i <= values.size() ? values[i - 1] * values[i - 1] : 0);
      q_[i] = q_[i - 1] + p_[i - 1];
    }
    const auto size = static_cast<double>(values.size());
    slack_ = 2 * unit * size * all_squares();
    weighted_slack_ = 4 * unit * static_cast<double>(p_.size() * p_.size()) * all_squares();
    Wave wave;
    for (std::size_t j = 0; j < spectra_.size(); ++j) {
      const auto rest = values.subspan(j * half);
      const auto block = rest.first(std::min<std::size_t>(half, rest.size()));
      std::fill(std::copy(block.begin(), block.end(), wave.re), wave.re + points, 0.0);
      std::fill_n(wave.im, points, 0.0);
      transform(wave);
      std::copy_n(wave.re, half + 8, spectra_[j].re);
      std::copy_n(wave.im, half + 8, spectra_[j].im);
    }
  }

  [[nodiscard]] int count() const { return count_; }
  [[nodiscard]] double all_squares() const { return p_.back(); }
  [[nodiscard]] const Spectrum& spectrum(int block) const {
    return spectra_[static_cast<std::size_t>(block)];
  }
  [[nodiscard]] Squares squares_from(int first) const {
    return {p_.data() + first, q_.data() + first, weighted_slack_};
  }
  /// At least the root of a block's squares; 0 behind the last.
  [[nodiscard]] double norm(int block) const {
    if (block >= count_) return 0;
    const double* const begin = p_.data() + std::ptrdiff_t{block} * half;
    return std::sqrt(begin[half] - begin[0] + slack_);
  }

 private:
  int count_;
  std::vector<double> p_;
  std::vector<double> q_;
  std::vector<Spectrum> spectra_;
  double slack_ = 0;           // of P
  double weighted_slack_ = 0;  // of Q, and of as many P
};

/// The transforms of the windows: block j and what follows it. A block half a length further has
/// its transform times (-1)^f.
std::vector<Spectrum> windows_of(const Blocks& blocks) {
  std::vector<Spectrum> windows;
  windows.reserve(static_cast<std::size_t>(blocks.count()));
  for (int j = 0; j < blocks.count(); ++j) {
    Spectrum window = blocks.spectrum(j);
    if (j + 1 < blocks.count()) {
      const Spectrum& next = blocks.spectrum(j + 1);
      for (int f = 0; f < half + 8; f += 2) {
        window.re[f] += next.re[f];
        window.im[f] += next.im[f];
        window.re[f + 1] -= next.re[f + 1];
        window.im[f + 1] -= next.im[f + 1];
      }
    }
    windows.push_back(window);
  }
  return windows;
}

/// Two real results in one transform back: x in the real parts, y in the imaginary ones.
void pack(const Spectrum& x, const Spectrum& y, Wave& wave) {
  for (int f = 0; f <= half; ++f) {
    wave.re[f] = x.re[f] - y.im[f];
    wave.im[f] = x.im[f] + y.re[f];
    if (f % half == 0) continue;
    wave.re[points - f] = x.re[f] + y.im[f];
    wave.im[points - f] = y.re[f] - x.im[f];
  }
}

class Proposer {
 public:
  Proposer(std::span<const double> a, std::span<const double> b)
      : size_(static_cast<int>(a.size())),
        same_(a.data() == b.data()),
        a_(a, ahead),
        other_(same_ ? std::span<const double>() : b, ahead),
        b_(same_ ? a_ : other_),
        windows_(windows_of(b_)) {}

  [[nodiscard]] bool finite() const {
    return std::isfinite(a_.all_squares()) && std::isfinite(b_.all_squares());
  }

  /// How many tiles of 2048 lags there are.
  [[nodiscard]] int tiles() const { return a_.count(); }

  /// The lags of the tiles t and t + 1.
  void propose(int t, std::span<float> means, std::vector<std::size_t>& open) {
    const int count_here = std::min(2, tiles() - t);
    tiles_ = {};
    double error = a_.all_squares() == 0 || b_.all_squares() == 0 ? 0 : vanished;
    for (int g = 0; g + t < a_.count(); g += group) {
      error += convolve(t, g);
      for (int s = 0; s < count_here; ++s) {
        const int begin = g * half;
        const int lag = (t + s) * half;
        const Terms terms = {.left = static_cast<double>(size_ - lag - begin),
                             .a = a_.squares_from(begin),
                             .b = b_.squares_from(begin + lag)};
        add_group(tiles_[static_cast<std::size_t>(s)], s == 0 ? wave_.re : wave_.im, terms);
      }
    }
    for (int s = 0; s < count_here; ++s) {
      const int lag = (t + s) * half;
      const int count = std::min(half, size_ - lag);
      prove(tiles_[static_cast<std::size_t>(s)], error, size_ - lag, count,
            &means[static_cast<std::size_t>(lag)], open_.data());
      for (int l = 0; l < count; ++l) {
        if (open_[static_cast<std::size_t>(l)] != 0)
          open.push_back(static_cast<std::size_t>(lag + l));
      }
    }
  }

 private:
  static constexpr int ahead = group + 2;

  /// A group's part of the sums of two tiles, to wave_; returns its error.
  double convolve(int t, int g) {
    sums_ = {};
    double error = 0;
    for (int j = g; j < std::min(g + group, a_.count() - t); ++j) {
      add_products(a_.spectrum(j), window(j + t), sums_[0]);
      if (j + t + 1 < a_.count()) add_products(a_.spectrum(j), window(j + t + 1), sums_[1]);
      // Both share the transform back, so each gets the error of both.
      error += transform_slack * a_.norm(j) *
               (b_.norm(j + t) + 2 * b_.norm(j + t + 1) + b_.norm(j + t + 2));
    }
    pack(sums_[0], sums_[1], wave_);
    transform_back(wave_);
    return error;
  }
  [[nodiscard]] const Spectrum& window(int block) const {
    return windows_[static_cast<std::size_t>(block)];
  }

  int size_;
  bool same_;
  Blocks a_;
  Blocks other_;
  const Blocks& b_;
  std::vector<Spectrum> windows_;
  std::array<Spectrum, 2> sums_;
  std::array<Tile, 2> tiles_;
  std::array<std::uint8_t, half> open_;
  Wave wave_ = {};
};

}  // namespace

std::optional<std::vector<std::size_t>> propose_lag_means(std::span<const double> a,
                                                          std::span<const double> b,
                                                          std::span<float> means) try {
  if (a.size() < least_lags) return std::nullopt;
  const auto proposer = std::make_unique<Proposer>(a, b);
  if (!proposer->finite()) return std::nullopt;
  std::vector<std::size_t> open;
  for (int t = 0; t < proposer->tiles(); t += 2) {
    tell_done(static_cast<double>(t) / proposer->tiles());
    proposer->propose(t, means, open);
  }
  return open;
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

}  // namespace torve::transforms
