#include "app/signal/transforms/lag_proposal.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/transforms/lag_squares.hpp"
#include "app/signal/transforms/transform.hpp"
#include "base/progress.hpp"

namespace torve::transforms {

namespace {

constexpr int half_group = LagSquares::half_group;
constexpr int group = 2 * half_group / half;
constexpr int run = LagSquares::run;
constexpr double margin = 1.01;
constexpr std::size_t least_lags = 2048;  // from here on proposals pay

TORVE_INLINE std::size_t at(int place) {
  return static_cast<std::size_t>(place);
}

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

/// A group's terms: a from its first, b from where the tile's first lag meets it.
struct Terms {
  double left;  // of the first lag
  LagSquares::Roots a;
  LagSquares::Roots b;
};

/// The spectra of a group's blocks, and of the windows that they meet at the lags of two tiles.
struct Factors {
  std::array<const Spectrum*, group> blocks;
  std::array<const Spectrum*, group + 1> windows;
};

/// The sums of conj(block) window of two tiles.
struct TwoSums {
  double re[2];
  double im[2];
};

TORVE_INLINE TwoSums products(const Factors& factors, int f) {
  TwoSums sums = {};
  for (int s = 0; s < 2; ++s) {
    for (std::size_t j = 0; j < group; ++j) {
      const Spectrum& x = *factors.blocks[j];
      const Spectrum& y = *factors.windows[j + at(s)];
      sums.re[s] += x.re[f] * y.re[f] + x.im[f] * y.im[f];
      sums.im[s] += x.re[f] * y.im[f] - x.im[f] * y.re[f];
    }
  }
  return sums;
}

/// Two real results in one transform back: the first tile's in the real parts, the second's in the
/// imaginary ones.
TORVE_CLONES void multiply(const Factors& factors, Wave& wave) {
  constexpr int part = 64;
  for (int first = 0; first < half; first += part) {
    double re[2][part];
    double im[2][part];
    for (int l = 0; l < part; ++l) {
      const TwoSums sums = products(factors, first + l);
      for (int s = 0; s < 2; ++s) {
        re[s][l] = sums.re[s];
        im[s][l] = sums.im[s];
      }
    }
    for (int l = 0; l < part; ++l) {
      wave.re[first + l] = re[0][l] - im[1][l];
      wave.im[first + l] = im[0][l] + re[1][l];
    }
    for (int l = first == 0 ? 1 : 0; l < part; ++l) {
      wave.re[points - first - l] = re[0][l] + im[1][l];
      wave.im[points - first - l] = re[1][l] - im[0][l];
    }
  }
  const TwoSums middle = products(factors, half);
  wave.re[half] = middle.re[0] - middle.im[1];
  wave.im[half] = middle.im[0] + middle.re[1];
}

/// Adds a group's part of the sums; the products are bounded for 32 lags at a time. The rounding of
/// `after` is one |s| more.
TORVE_CLONES void add_group(Tile& tile, const double* part, const Terms& terms) {
  for (int r = 0; r < half / run; ++r) {
    const double products =
        terms.a.falling[0] * terms.b.falling[r] + terms.a.rising[0] * terms.b.rising[r];
    for (int l = r * run; l < (r + 1) * run; ++l) {
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

TORVE_CLONES void finish(Tile& tile) {
  for (double& size : tile.sizes)
    size *= margin * unit;
}

std::unique_ptr<Spectrum[]> spectra(int count) {
  return std::make_unique_for_overwrite<Spectrum[]>(at(count));
}

/// One of the signals, in blocks.
class Blocks {
 public:
  /// `ahead` blocks of nothing are known behind the last.
  Blocks(std::span<const double> values, int ahead)
      : count_(static_cast<int>((values.size() + half - 1) / half)),
        squares_(values, (count_ + ahead) * half),
        spectra_(spectra(count_)) {
    Wave wave;
    for (int j = 0; j < count_; ++j) {
      const auto rest = values.subspan(at(j * half));
      const auto block = rest.first(std::min<std::size_t>(half, rest.size()));
      std::fill(std::copy(block.begin(), block.end(), wave.re), wave.re + points, 0.0);
      std::fill_n(wave.im, points, 0.0);
      transform(wave);
      std::copy_n(wave.re, half + 8, spectra_[at(j)].re);
      std::copy_n(wave.im, half + 8, spectra_[at(j)].im);
    }
  }

  [[nodiscard]] int count() const { return count_; }
  [[nodiscard]] const LagSquares& squares() const { return squares_; }
  [[nodiscard]] const Spectrum& spectrum(int block) const { return spectra_[at(block)]; }
  [[nodiscard]] std::unique_ptr<Spectrum[]> take_spectra() { return std::move(spectra_); }
  /// At least the root of a block's squares; 0 behind the last.
  [[nodiscard]] double norm(int block) const {
    return block < count_ ? squares_.norm(block * half, half) : 0;
  }

 private:
  int count_;
  LagSquares squares_;
  std::unique_ptr<Spectrum[]> spectra_;
};

/// The transform of a window: a block and what follows it. A block half a length further has its
/// transform times (-1)^f. The window may take the block's place.
TORVE_CLONES void add_next(const Spectrum& block, const Spectrum& next, Spectrum& window) {
  TORVE_INDEPENDENT
  for (int f = 0; f < half + 8; f += 2) {
    window.re[f] = block.re[f] + next.re[f];
    window.im[f] = block.im[f] + next.im[f];
    window.re[f + 1] = block.re[f + 1] - next.re[f + 1];
    window.im[f + 1] = block.im[f + 1] - next.im[f + 1];
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
        windows_(same_ ? spectra(b_.count()) : other_.take_spectra()) {
    const Spectrum* const blocks = same_ ? &a_.spectrum(0) : windows_.get();
    for (int j = 0; j < b_.count(); ++j)
      add_next(blocks[j], j + 1 < b_.count() ? blocks[j + 1] : nothing_, windows_[at(j)]);
  }

  [[nodiscard]] bool finite() const {
    return std::isfinite(a_.squares().all()) && std::isfinite(b_.squares().all());
  }

  /// How many tiles of 2048 lags there are.
  [[nodiscard]] int tiles() const { return a_.count(); }

  /// The lags of the tiles t and t + 1.
  void propose(int t, const std::function<void(const LagTile&)>& take) {
    const int count_here = std::min(2, tiles() - t);
    tiles_ = {};
    const double least = a_.squares().all() == 0 || b_.squares().all() == 0 ? 0 : vanished;
    std::array<double, 2> errors = {least, least};
    for (int g = 0; g + t < a_.count(); g += group) {
      convolve(t, g, errors);
      for (int s = 0; s < count_here; ++s) {
        const int begin = g * half;
        const int lag = (t + s) * half;
        const Terms terms = {.left = static_cast<double>(size_ - lag - begin),
                             .a = a_.squares().roots_from(begin),
                             .b = b_.squares().roots_from(begin + lag)};
        add_group(tiles_[at(s)], s == 0 ? wave_.re : wave_.im, terms);
      }
    }
    for (int s = 0; s < count_here; ++s) {
      Tile& tile = tiles_[at(s)];
      finish(tile);
      const int lag = (t + s) * half;
      const auto count = at(std::min(half, size_ - lag));
      take({.first = at(lag),
            .sums = std::span(tile.sum).first(count),
            .roundings = std::span(tile.sizes).first(count),
            .error = margin * errors[at(s)]});
    }
  }

 private:
  static constexpr int ahead = group + 2;

  /// A group's part of the sums of two tiles, to wave_; adds to their errors.
  void convolve(int t, int g, std::array<double, 2>& errors) {
    Factors factors;
    for (int j = 0; j < group; ++j) {
      factors.blocks[at(j)] = g + j < a_.count() ? &a_.spectrum(g + j) : &nothing_;
    }
    for (int j = 0; j <= group; ++j) {
      const int window = g + j + t;
      factors.windows[at(j)] = window < b_.count() ? &windows_[at(window)] : &nothing_;
    }
    multiply(factors, wave_);
    transform_back(wave_);
    for (int j = g; j < std::min(g + group, a_.count() - t); ++j) {
      const double first = a_.norm(j) * (b_.norm(j + t) + b_.norm(j + t + 1));
      const double second = a_.norm(j) * (b_.norm(j + t + 1) + b_.norm(j + t + 2));
      const double both = backward_slack * (first + second);
      errors[0] += forward_slack * first + both;
      errors[1] += forward_slack * second + both;
    }
  }

  int size_;
  bool same_;
  Blocks a_;
  Blocks other_;
  const Blocks& b_;
  std::unique_ptr<Spectrum[]> windows_;
  Spectrum nothing_ = {};
  std::array<Tile, 2> tiles_;
  Wave wave_ = {};
};

}  // namespace

bool propose_lags(std::span<const double> a, std::span<const double> b,
                  const std::function<void(const LagTile&)>& take) try {
  if (a.size() < least_lags) return false;
  const auto proposer = std::make_unique<Proposer>(a, b);
  if (!proposer->finite()) return false;
  for (int t = 0; t < proposer->tiles(); t += 2) {
    tell_done(static_cast<double>(t) / proposer->tiles());
    proposer->propose(t, take);
  }
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace torve::transforms
