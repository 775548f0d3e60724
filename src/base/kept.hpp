// Variables that others rely on, put back at the end of a scope, also by an exception.
#pragma once

#include <tuple>

namespace torve {

/// While one lives the variables may be changed; at its end they are what they were at its start.
///
///     const Kept limits(X1_min, Y1_min, X1_max, Y1_max);
template <typename... Values>
class Kept {
 public:
  explicit Kept(Values&... variables) : variables_(variables...), values_(variables...) {}
  ~Kept() { variables_ = values_; }
  Kept(const Kept&) = delete;
  Kept& operator=(const Kept&) = delete;

 private:
  std::tuple<Values&...> variables_;
  std::tuple<Values...> values_;
};

}  // namespace torve
