// The analyses as they are defined: one plain loop after another, the library's sine and cosine,
// stdio. What the fast ones are compared with, digit by digit, and timed against.
#pragma once

#include <string>
#include <vector>

namespace torve::literal {

using Floats = std::vector<float>;

Floats read(const std::string& name, std::size_t limit = 100000);
void write(const std::string& name, const Floats& values);

/// For lags of y against x: deviations from the means m1 and m2.
Floats lag_means(const Floats& x, double m1, const Floats& y, double m2);
double mean(const Floats& x, std::size_t count);

struct Match {
  int place;
  double mean;
  int last;  // the samples of the last offset tried
};
Match best_offset(const Floats& a, const Floats& b, double scale, int start);
Match best_scale_step(const Floats& a, const Floats& b, int offset, double start);

struct Coefficients {
  int size;
  Floats a, b, power;
};
Coefficients spectrum(const Floats& x);
std::vector<double> filtered(const Coefficients& c, int low, int high, int mode);

/// The procedures, on files. The lines that tell results go to standard output.
void autocorrelation(const std::string& in, const std::string& out);
void correlation(const std::string& in1, const std::string& in2, const std::string& out);
void my_correlation(const std::string& in1, const std::string& in2, const std::string& out,
                    int start, float scale);
Coefficients power_spectrum(const std::string& in, const std::string& out, std::size_t budget);
void filter_spectrum(const Coefficients& c, const std::string& out, int low, int high, int mode);

}  // namespace torve::literal
