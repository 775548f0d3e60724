#include "bench/literal.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace torve::literal {

namespace {

double d(float value) {
  return static_cast<double>(value);
}

double difference(const Floats& a, std::size_t j, const Floats& b, double scale,
                  std::size_t count) {
  double sum = 0;
  for (std::size_t i = 0; i < count; ++i)
    sum += std::fabs(d(a[j + i]) - scale * d(b[i]));
  return sum / static_cast<double>(count);
}

double divide_by_mean(Floats& values) {
  double sum = 0;
  for (const float value : values)
    sum += std::fabs(d(value));
  const double mean = sum / static_cast<double>(values.size());
  for (float& value : values)
    value = static_cast<float>(d(value) / mean);
  return mean;
}

double variance(const Floats& x, double m) {
  double sum = 0;
  for (const float value : x)
    sum += (d(value) - m) * (d(value) - m);
  return sum / static_cast<double>(x.size());
}

int count(const Floats& x) {
  return static_cast<int>(x.size());
}

}  // namespace

Floats read(const std::string& name, std::size_t limit) {
  Floats values;
  std::FILE* file = std::fopen(name.c_str(), "r");
  char line[132];
  float value = 0;
  while (values.size() < limit && std::fgets(line, sizeof line, file) != nullptr) {
    std::sscanf(line, "%*d %f\n", &value);
    values.push_back(value);
  }
  std::fclose(file);
  return values;
}

void write(const std::string& name, const Floats& values) {
  std::FILE* file = std::fopen(name.c_str(), "w");
  int index = 0;
  for (const float value : values)
    std::fprintf(file, "%d %f\n", index++, d(value));
  std::fclose(file);
}

double mean(const Floats& x, std::size_t count) {
  double sum = 0;
  for (std::size_t i = 0; i < std::min(count, x.size()); ++i)
    sum += d(x[i]);
  return sum / static_cast<double>(count);
}

Floats lag_means(const Floats& x, double m1, const Floats& y, double m2) {
  const std::size_t n = std::min(x.size(), y.size());
  Floats means(n);
  for (std::size_t k = 0; k < n; ++k) {
    double sum = 0;
    for (std::size_t i = 0; i < n - k; ++i)
      sum += (d(x[i]) - m1) * (d(y[i + k]) - m2);
    means[k] = static_cast<float>(sum / static_cast<double>(n - k));
  }
  return means;
}

Match best_offset(const Floats& a, const Floats& b, double scale, int start) {
  Match best = {-1, 1000000, 0};
  for (int j = std::max(0, start - 1102); j <= start + 1101; ++j) {
    const int length = j + count(b) <= count(a) ? count(b) : count(a) - j;
    if (length <= 0) continue;
    const double mean =
        difference(a, static_cast<std::size_t>(j), b, scale, static_cast<std::size_t>(length));
    if (mean < best.mean) best = {j, mean, 0};
    best.last = length;
  }
  return best;
}

Match best_scale_step(const Floats& a, const Floats& b, int offset, double start) {
  const auto j = static_cast<std::size_t>(offset);
  const std::size_t length = std::min(b.size(), a.size() - j);
  Match best = {0, 1000000, 0};
  for (int k = -1000; k <= 1000; ++k) {
    const double mean = difference(a, j, b, start + k / 5000.0, length);
    if (mean < best.mean) best = {k, mean, 0};
  }
  return best;
}

Coefficients spectrum(const Floats& x) {
  const int size = count(x);
  const double m = mean(x, x.size());
  Coefficients c = {size, {static_cast<float>(m)}, {0}, {static_cast<float>(m * m)}};
  for (int j = 1; j <= size / 2; ++j) {
    double sum_a = 0;
    double sum_b = 0;
    for (int i = 0; i < size; ++i) {
      const auto p =
          static_cast<std::int32_t>(2U * static_cast<unsigned>(j) * static_cast<unsigned>(i));
      const double angle = p * 3.14159 / size;
      sum_a += d(x[static_cast<std::size_t>(i)]) * std::cos(angle);
      sum_b += d(x[static_cast<std::size_t>(i)]) * std::sin(angle);
    }
    const double a = 2 * sum_a / size;
    const double b = 2 * sum_b / size;
    c.a.push_back(static_cast<float>(a));
    c.b.push_back(static_cast<float>(b));
    c.power.push_back(static_cast<float>(a * a + b * b));
  }
  c.a.resize(x.size());
  c.b.resize(x.size());
  return c;
}

std::vector<double> filtered(const Coefficients& c, int low, int high, int mode) {
  const int size = c.size;
  const int jlow = static_cast<int>(std::int64_t{low} * size / 44100);
  const int jhigh = static_cast<int>(std::int64_t{high} * size / 44100);
  const double mean = d(c.a[0]) * 44100 / size;
  std::vector<double> values;
  for (int t = 0; t < size; ++t) {
    double sum = mode == 1 || (jlow <= 0 && jhigh >= 0) ? mean : 0;
    const auto add = [&](int first, int last) {
      for (int j = std::max(first, 1); j <= std::min(last, size - 1); ++j) {
        const double angle = 2 * 3.14159 * t * j / size;
        const auto i = static_cast<std::size_t>(j);
        sum += 2 * (d(c.a[i]) * std::cos(angle) + d(c.b[i]) * std::sin(angle)) * 44100 / size;
      }
    };
    if (mode == 0) add(jlow, jhigh);
    if (mode == 1) add(1, jlow - 1);
    if (mode == 1) add(jhigh + 1, size - 1);
    values.push_back(sum);
  }
  return values;
}

void autocorrelation(const std::string& in, const std::string& out) {
  const Floats x = read(in);
  const double m = mean(x, x.size());
  write(out, lag_means(x, m, x, m));
}

void correlation(const std::string& in1, const std::string& in2, const std::string& out) {
  const Floats x = read(in1);
  const Floats y = read(in2);
  const double m1 = mean(x, x.size());
  const double m2 = mean(x, y.size());
  std::printf("got ave1=%f and var1=%f counter1=%d\n", m1, variance(x, m1), count(x));
  std::printf("got ave2=%f and var2=%f counter2=%d\n", m2, variance(y, m2), count(y));
  write(out, lag_means(x, m1, y, m2));
}

void my_correlation(const std::string& in1, const std::string& in2, const std::string& out,
                    int start, float scale) {
  Floats a = read(in1);
  Floats b = read(in2);
  const double g1 = divide_by_mean(a);
  const double g2 = divide_by_mean(b);
  std::printf("my_correlation, got ave1=%f ave2=%f counter1=%d counter2=%d\n", g1, g2, count(a),
              count(b));
  const Match offset = best_offset(a, b, d(scale), start);
  std::printf("offset_best=%d ave3min=%f samples=%d\n", offset.place, offset.mean, offset.last);
  const Match step = best_scale_step(a, b, offset.place, d(scale));
  const double s = d(scale) + step.place / 5000.0;
  const auto j = static_cast<std::size_t>(offset.place);
  Floats c(std::min(b.size(), a.size() - j));
  std::printf("scale_best=%f ave3min=%f offset=%d\n", s, step.mean, offset.place);
  std::printf("counter1=%d counter2=%d counter=%d\n", count(a), count(b), count(c));
  for (std::size_t i = 0; i < c.size(); ++i)
    c[i] = static_cast<float>(d(a[j + i]) - s * d(b[i]));
  const double m = mean(c, c.size());
  double sum = 0;
  double largest = 0;
  for (float& value : c) {
    value = static_cast<float>(d(value) - m);
    sum += std::fabs(d(value));
    largest = std::max(largest, std::fabs(d(value)));
  }
  std::printf("removed the average, ave1=%f counter=%d\n", m, count(c));
  std::printf("reduced average of absolute values ave3=%f\n", sum / static_cast<double>(c.size()));
  std::printf("largest absolute value %f, scale to one\nname3=%s\n", largest, out.c_str());
  for (float& value : c)
    value = static_cast<float>(d(value) / largest);
  write(out, c);
}

Coefficients power_spectrum(const std::string& in, const std::string& out, std::size_t budget) {
  Floats x = read(in, budget - 1);
  x.insert(x.begin(), 0.0F);
  Coefficients c = spectrum(x);
  std::FILE* file = std::fopen(out.c_str(), "w");
  std::fprintf(file, "size=%d\n", c.size);
  int index = 0;
  for (const float power : c.power)
    std::fprintf(file, "%d %f\n", index++, d(power));
  std::fclose(file);
  return c;
}

void filter_spectrum(const Coefficients& c, const std::string& out, int low, int high, int mode) {
  std::FILE* file = std::fopen(out.c_str(), "w");
  int index = 0;
  for (const double value : filtered(c, low, high, mode))
    std::fprintf(file, "%d %f\n", index++, value);
  std::fclose(file);
}

}  // namespace torve::literal
