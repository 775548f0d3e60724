#include "app/signal/work_buffer.hpp"

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace torve {

void* pointer1 = nullptr;
std::vector<OpenCoefficients> open_coefficients;

namespace {

constexpr std::size_t most_bins = 100'000;
constexpr std::size_t a_words = 1;
constexpr std::size_t b_words = a_words + most_bins;
constexpr std::size_t power_words = b_words + most_bins;
static_assert((power_words + 2 * most_bins) * sizeof(float) == work_buffer_bytes);

// Words of float: K's bits are kept in the first as they are.
std::unique_ptr<float[]> block;

}  // namespace

bool allocate_work_buffer() {
  open_coefficients.clear();
  block.reset(new (std::nothrow) float[work_buffer_bytes / sizeof(float)]());
  pointer1 = block.get();
  return pointer1 != nullptr;
}

void release_work_buffer() {
  open_coefficients.clear();
  block.reset();
  pointer1 = nullptr;
}

int stored_spectrum_size() {
  std::int32_t size = 0;
  if (block) std::memcpy(&size, block.get(), sizeof size);
  return size;
}

void store_spectrum_size(int size) {
  const std::int32_t word = size;
  std::memcpy(block.get(), &word, sizeof word);
}

std::span<float> stored_a() {
  return {block.get() + a_words, most_bins};
}

std::span<float> stored_b() {
  return {block.get() + b_words, most_bins};
}

std::span<float> stored_power() {
  return {block.get() + power_words, most_bins};
}

}  // namespace torve
