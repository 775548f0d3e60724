#include "bell.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <gtest/gtest.h>

namespace torve {
namespace {

double mean_magnitude(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values)
    sum += std::abs(value);
  return sum / static_cast<double>(values.size());
}

/// Distance of the recordings when the second is laid `offset` samples into the first.
double distance(const BellRecordings& bell, int offset) {
  const double scale = mean_magnitude(bell.first) / mean_magnitude(bell.second);
  const auto shift = static_cast<std::size_t>(offset);
  const std::size_t length = std::min(bell.second.size(), bell.first.size() - shift);
  double sum = 0;
  for (std::size_t i = 0; i < length; ++i) {
    sum += std::abs(bell.first[shift + i] - scale * bell.second[i]);
  }
  return sum / static_cast<double>(length);
}

TEST(bell, the_recordings_match_best_at_the_second_start) {
  const BellRecordings bell = record_bell();
  double smallest = 1e9;
  int best = -1;
  for (int offset = 0; offset < 2 * second_start; ++offset) {
    const double d = distance(bell, offset);
    if (d < smallest) {
      smallest = d;
      best = offset;
    }
  }
  EXPECT_EQ(best, second_start);
  // Two microphones: alike, but far from the same.
  EXPECT_LT(smallest, 0.75 * mean_magnitude(bell.first));
  EXPECT_GT(smallest, 0.1 * mean_magnitude(bell.first));
}

TEST(bell, recordings_are_16_bit_samples_that_fit_the_program) {
  const BellRecordings bell = record_bell();
  for (const std::vector<double>* sound : {&bell.first, &bell.second}) {
    EXPECT_GE(sound->size(), 2U * sampling_rate);
    EXPECT_LE(sound->size(), 100000U);
    for (const double value : *sound) {
      ASSERT_LT(std::abs(value), 1);
      ASSERT_EQ(value * 32768, std::floor(value * 32768));
    }
  }
}

TEST(bell, the_residual_of_a_scaled_copy_and_a_disturbance_is_the_disturbance) {
  std::vector<double> second(20000);
  for (std::size_t i = 0; i < second.size(); ++i)
    second[i] = std::sin(0.01 * static_cast<double>(i));
  std::vector<double> first(30, 0.0);
  for (const double value : second)
    first.push_back(0.5 * value);
  first[30 + 7000] += 0.25;
  const std::vector<double> rest = match_residual(first, second, 30);
  ASSERT_EQ(rest.size(), second.size());
  EXPECT_EQ(std::max_element(rest.begin(), rest.end()) - rest.begin(), 7000);
  EXPECT_EQ(rest[7000], 1);
  EXPECT_LT(mean_magnitude(rest), 0.002);
  EXPECT_NEAR(std::accumulate(rest.begin(), rest.end(), 0.0), 0, 1e-6);
}

TEST(bell, samples_are_written_as_index_and_six_decimals) {
  EXPECT_EQ(sample_text({0, -0.5, 1.0 / 3, 12345678}),
            "0 0.000000\n1 -0.500000\n2 0.333333\n3 12345678.000000\n");
}

}  // namespace
}  // namespace torve
