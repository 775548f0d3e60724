#include "app/signal/fourier_corrections.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <new>
#include <numeric>

#include "app/signal/backward_sums.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;
constexpr int block = Frames::block;
constexpr double unit = 0x1p-53;
constexpr double slack = 0x1p-18;
constexpr double vanished_single = 0x1p-129;
constexpr double margin = 1.01;  // for the roundings of the bound
// From one of so many blocks on it makes up for the wider bound to leave them out.
constexpr std::size_t worth_leaving_out = 8;
constexpr std::size_t steps = 64;  // of a bound of angles
constexpr int bins_at_once = 32;   // that it is worked out for
constexpr double largest_product = 0x1p31;

/// What the roundings of an angle of at most this product are at most.
double angle_rounding(double product, int size) {
  constexpr double slightly = 1 + 0x1p-50;
  const double turned = std::min(product, largest_product) * short_pi * slightly;
  return (half_ulp(turned) / size + half_ulp(turned / size * slightly)) * slightly;
}

}  // namespace

FourierEnds ends_of(const FourierEstimate& estimate) {
  const FourierSums& sums = estimate.sums;
  const double error = estimate.error + estimate.angle_error + estimate.addition_error;
  return {{sums.cosines - error, sums.sines - error}, {sums.cosines + error, sums.sines + error}};
}

CorrectedBin::CorrectedBin(const FourierEstimate& proposed)
    : estimate(proposed),
      before(proposed.sums),
      unsure(proposed.error + proposed.angle_error + proposed.addition_error),
      additions(0) {}

std::unique_ptr<FourierCorrections> FourierCorrections::make(std::span<const float> x) try {
  return std::make_unique<FourierCorrections>(x);
} catch (const std::bad_alloc&) {
  return nullptr;
}

FourierCorrections::FourierCorrections(std::span<const float> x)
    : x_(x.begin(), x.end()), sizes_((x.size() + block - 1) / block), left_out_(sizes_.size()) {
  double largest = 0;
  for (const float value : x) {
    const double size = std::fabs(static_cast<double>(value));
    largest = std::max(largest, size);
    terms_error_ += (0.5 + library_slack) * unit * size + half_ulp(size);
  }
  if (largest > 0) scale_ = std::exp2(std::ilogb(largest));
  for (std::size_t i = 0; i < x_.size(); ++i) {
    x_[i] = static_cast<float>(static_cast<double>(x_[i]) / scale_);
    sizes_[i / block] += std::fabs(static_cast<double>(x_[i]));
  }
  size_ = std::accumulate(sizes_.begin(), sizes_.end(), 0.0);
  lightest_.resize(sizes_.size());
  std::iota(lightest_.begin(), lightest_.end(), 0U);
  std::ranges::sort(lightest_, {},
                    [this](std::size_t b) { return sizes_[b] * static_cast<double>(b + 1); });
}

CorrectedBin FourierCorrections::begin(int bin, const TrueSums& sums) {
  if (bin / bins_at_once != bins_of_error_) {
    bins_of_error_ = bin / bins_at_once;
    error_of_all_ = angle_error((bins_of_error_ + 1) * bins_at_once, sizes_.size());
  }
  return CorrectedBin({
      .sums = sums.sums,
      .angle_error = error_of_all_,
      .addition_error = margin * unit * static_cast<double>(x_.size()) * size_ * scale_,
      .error = sums.error + margin * terms_error_,
  });
}

FourierCorrections::Range FourierCorrections::blocks_of(int part) const {
  const auto border = [this](int parts_left) {
    return sizes_.size() * static_cast<std::size_t>(parts_left) / parts;
  };
  return {border(parts - part - 1), border(parts - part)};
}

double FourierCorrections::angle_error(int bin, std::size_t blocks) const {
  const std::size_t blocks_at_once = (sizes_.size() + steps - 1) / steps;
  double sum = 0;
  for (std::size_t first = 0; first < blocks; first += blocks_at_once) {
    const std::size_t end = std::min(first + blocks_at_once, blocks);
    double size = 0;
    for (std::size_t b = first; b < end; ++b)
      size += sizes_[b];
    const double product = 2.0 * bin * static_cast<double>(end * block);
    sum += size * angle_rounding(product, static_cast<int>(x_.size()));
  }
  return margin * scale_ * sum;
}

double FourierCorrections::leave_out(const Range& range, int largest_bin, double budget) {
  std::ranges::fill(left_out_, 0);
  std::size_t count = 0;
  double sum = 0;
  for (const std::size_t b : lightest_) {
    if (b < range.first || b >= range.last) continue;
    const double product = 2.0 * largest_bin * static_cast<double>((b + 1) * block);
    const double error = scale_ * sizes_[b] * angle_rounding(product, static_cast<int>(x_.size()));
    if (!(sum + error <= budget)) break;
    sum += error;
    left_out_[b] = 1;
    ++count;
  }
  if (count * worth_leaving_out >= range.last - range.first) return sum;
  std::ranges::fill(left_out_, 0);
  return 0;
}

BackwardSums& FourierCorrections::tile_of(std::span<const int> bins,
                                          std::span<const CorrectedBin> corrected) const {
  static BackwardSums tile;
  for (std::size_t l = 0; l < lanes; ++l) {
    const CorrectedBin& bin = corrected[std::min(l, corrected.size() - 1)];
    tile.before.cosines[l] = bin.before.cosines / scale_;
    tile.before.sines[l] = bin.before.sines / scale_;
    tile.unsure[l] = bin.unsure / scale_;
    tile.additions[l] = bin.additions / scale_;
  }
  tile.begin(static_cast<int>(x_.size()), bins);
  return tile;
}

SampleBlock FourierCorrections::samples_of(std::size_t number) const {
  const int first = static_cast<int>(number) * block;
  const int count = std::min(block, static_cast<int>(x_.size()) - first);
  return {first, count, sizes_[number], left_out_[number] != 0};
}

void FourierCorrections::correct(int part, std::span<const int> bins,
                                 std::span<CorrectedBin> corrected) {
  const int size = static_cast<int>(x_.size());
  const Range range = blocks_of(part);
  double budget = corrected.front().estimate.error / parts;
  for (const CorrectedBin& bin : corrected)
    budget = std::min(budget, bin.estimate.error / parts);
  const double left_out = leave_out(range, std::ranges::max(bins), budget);
  BackwardSums& tile = tile_of(bins, corrected);
  for (std::size_t b = range.last; b-- > range.first;)
    tile.take(x_.data(), samples_of(b));
  const double angle_left = angle_error(std::ranges::max(bins), range.first);
  for (std::size_t l = 0; l < corrected.size(); ++l) {
    CorrectedBin& bin = corrected[l];
    bin.before = {tile.before.cosines[l] * scale_, tile.before.sines[l] * scale_};
    bin.unsure = tile.unsure[l] * scale_;
    bin.additions = tile.additions[l] * scale_;
    FourierEstimate& estimate = bin.estimate;
    estimate.sums.cosines += tile.corrections.cosines[l] / size * scale_;
    estimate.sums.sines += tile.corrections.sines[l] / size * scale_;
    estimate.error +=
        margin * (slack * estimate.angle_error + left_out) + vanished_single * scale_ +
        2 * unit * (std::fabs(estimate.sums.cosines) + std::fabs(estimate.sums.sines));
    estimate.angle_error = angle_left;
    if (range.first == 0) estimate.addition_error = margin * bin.additions;
  }
}

void FourierCorrections::refine(std::span<const int> bins, std::span<CorrectedBin> corrected) {
  for (CorrectedBin& bin : corrected) {
    bin.before = bin.estimate.sums;
    bin.unsure = bin.estimate.error + bin.estimate.addition_error;
  }
  BackwardSums& tile = tile_of(bins, corrected);
  for (std::size_t b = sizes_.size(); b-- > 0;)
    tile.take_closely(x_.data(), samples_of(b));
  for (std::size_t l = 0; l < corrected.size(); ++l) {
    double& error = corrected[l].estimate.addition_error;
    const double closer =
        std::max(tile.close_additions.cosines[l], tile.close_additions.sines[l]) * scale_ * margin;
    error = std::min(error, closer);
  }
}

}  // namespace torve
