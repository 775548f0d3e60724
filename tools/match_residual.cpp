#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <span>

#include "bell.hpp"

namespace torve {

namespace {

double mean_magnitude(std::span<const float> values) {
  double sum = 0;
  for (const float value : values)
    sum += std::abs(value);
  return sum / static_cast<double>(values.size());
}

/// As floats, the form in which the program holds samples, with a mean absolute value of 1.
std::vector<float> levelled(const std::vector<double>& values) {
  std::vector<float> result(values.begin(), values.end());
  const double level = mean_magnitude(result);
  for (float& value : result)
    value = static_cast<float>(value / level);
  return result;
}

double mean_distance(std::span<const float> a, std::span<const float> b, double scale) {
  double sum = 0;
  for (std::size_t i = 0; i < b.size(); ++i)
    sum += std::abs(a[i] - scale * b[i]);
  return sum / static_cast<double>(b.size());
}

double best_scale(std::span<const float> a, std::span<const float> b) {
  double best = 1;
  double smallest = std::numeric_limits<double>::max();
  for (int step = -1000; step <= 1000; ++step) {
    const double scale = 1 + step / 5000.0;
    const double distance = mean_distance(a, b, scale);
    if (distance < smallest) {
      smallest = distance;
      best = scale;
    }
  }
  return best;
}

}  // namespace

std::vector<double> match_residual(const std::vector<double>& first,
                                   const std::vector<double>& second, int offset) {
  const std::vector<float> whole = levelled(first);
  const std::vector<float> b = levelled(second);
  const std::span<const float> a = std::span(whole).subspan(static_cast<std::size_t>(offset));
  const std::span<const float> matched = std::span(b).first(std::min(a.size(), b.size()));
  const double scale = best_scale(a, matched);

  std::vector<double> rest(matched.size());
  double mean = 0;
  for (std::size_t i = 0; i < rest.size(); ++i)
    mean += rest[i] = a[i] - scale * matched[i];
  mean /= static_cast<double>(rest.size());
  double largest = 0;
  for (double& value : rest)
    largest = std::max(largest, std::abs(value -= mean));
  for (double& value : rest)
    value /= largest;
  return rest;
}

std::string sample_text(const std::vector<double>& values) {
  std::string text;
  char number[32];
  for (std::size_t i = 0; i < values.size(); ++i) {
    text.append(number, std::to_chars(number, std::end(number), i).ptr);
    text += ' ';
    const auto end =
        std::to_chars(number, std::end(number), values[i], std::chars_format::fixed, 6);
    text.append(number, end.ptr);
    text += '\n';
  }
  return text;
}

}  // namespace torve
