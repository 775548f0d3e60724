#include "app/signal/transforms/exact_turn.hpp"

#include "app/signal/exact_phasor.hpp"

namespace torve::transforms {

SineCosine exact_turn(std::uint64_t product, int size) {
  const long double angle = static_cast<long double>(without_turns(product, size)) * 0x1p-92L /
                            static_cast<long double>(size);
  const auto high = static_cast<double>(angle);
  return moved(sine_cosine(high), static_cast<double>(angle - static_cast<long double>(high)));
}

}  // namespace torve::transforms
