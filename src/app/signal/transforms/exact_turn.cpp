#include "app/signal/transforms/exact_turn.hpp"

#include <cmath>
#include <numbers>

namespace torve::transforms {

SineCosine exact_turn(std::uint64_t product, int size) {
  __extension__ using Wide = unsigned __int128;
  __extension__ using SignedWide = __int128;
  constexpr auto mantissa = static_cast<std::uint64_t>(short_pi * 0x1p51);  // exact
  constexpr Wide two_pi = (Wide{0x6487ED511} << 60) | 0x0B4611A62633145;    // 2 pi 2^92
  constexpr double turns_of_one = short_pi / (2 * std::numbers::pi);
  const auto turns =
      static_cast<std::uint64_t>(std::llround(static_cast<double>(product) * turns_of_one / size));
  const Wide whole_turns = Wide{turns * static_cast<std::uint64_t>(size)} * two_pi;
  const Wide rest = ((Wide{product} * mantissa) << 41) - whole_turns;
  const long double angle = static_cast<long double>(static_cast<SignedWide>(rest)) * 0x1p-92L /
                            static_cast<long double>(size);
  const auto high = static_cast<double>(angle);
  return moved(sine_cosine(high), static_cast<double>(angle - static_cast<long double>(high)));
}

}  // namespace torve::transforms
