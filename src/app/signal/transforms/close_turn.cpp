#include "app/signal/transforms/close_turn.hpp"

#include <array>
#include <cmath>
#include <numbers>

#include "app/signal/double_double.hpp"
#include "app/signal/exact_phasor.hpp"

namespace torve::transforms {

namespace {

constexpr std::uint64_t parts = 1024;

SplitSineCosine split(long double sine, long double cosine) {
  const auto high_sine = static_cast<double>(sine);
  const auto high_cosine = static_cast<double>(cosine);
  return {high_sine, high_cosine, static_cast<double>(sine - static_cast<long double>(high_sine)),
          static_cast<double>(cosine - static_cast<long double>(high_cosine))};
}

/// The multiples of a 1024th of a turn.
const std::array<SplitSineCosine, parts>& parts_of_a_turn() {
  static const auto table = [] {
    std::array<SplitSineCosine, parts> made = {};
    for (std::size_t n = 0; n < parts; ++n) {
      const long double angle =
          2 * std::numbers::pi_v<long double> * static_cast<long double>(n) / parts;
      made[n] = split(std::sin(angle), std::cos(angle));
    }
    return made;
  }();
  return table;
}

}  // namespace

SplitSineCosine close_turn(std::uint64_t product, int size) {
  constexpr auto mantissa = static_cast<std::uint64_t>(short_pi * 0x1p51);  // exact
  constexpr double parts_of_one = short_pi / (2 * std::numbers::pi) * parts;
  const auto nearest =
      static_cast<std::uint64_t>(std::llround(static_cast<double>(product) * parts_of_one / size));
  const UnsignedWide whole_parts =
      UnsignedWide{nearest * static_cast<std::uint64_t>(size)} * two_pi;
  const auto rest = static_cast<Wide>(((UnsignedWide{product} * mantissa) << 51) - whole_parts);
  const long double left =
      static_cast<long double>(rest) * 0x1p-102L / static_cast<long double>(size);
  const auto y = static_cast<double>(left);
  const auto y_rest = static_cast<double>(left - static_cast<long double>(y));
  const double z = y * y;
  const double sine = y + (y_rest + y * z * (-1 / 6. + z * (1 / 120. - z / 5040)));
  const double cosine_less_1 = z * (-1 / 2. + z * (1 / 24. - z / 720)) - y * y_rest;
  const SplitSineCosine& at = parts_of_a_turn()[nearest % parts];
  const DoubleDouble s =
      exact_sum(at.sine, at.sine_rest + (at.sine * cosine_less_1 + at.cosine * sine));
  const DoubleDouble c =
      exact_sum(at.cosine, at.cosine_rest + (at.cosine * cosine_less_1 - at.sine * sine));
  return {s.high, c.high, s.low, c.low};
}

std::shared_ptr<const ChirpTurns> chirp_turns(int size, std::size_t count) {
  static std::shared_ptr<const ChirpTurns> kept;
  static int kept_size = 0;
  if (kept && kept_size == size && kept->size() >= count) return kept;
  kept.reset();
  auto turns = std::make_shared<ChirpTurns>(count);
  for (std::uint64_t m = 0; m < count; ++m)
    (*turns)[m] = close_turn(m * m, size);
  kept_size = size;
  kept = turns;
  return turns;
}

}  // namespace torve::transforms
