#include "base/memory_reserve.hpp"

#include <cstddef>
#include <malloc.h>
#include <memory>
#include <new>

namespace torve {

namespace {

// More than everything that one press takes in small pieces. Pages that nobody writes to are not
// resident.
constexpr std::size_t reserve_bytes = std::size_t{8} << 20;

constexpr int large_block_bytes = 256 << 10;

std::unique_ptr<std::byte[]> reserve;

bool spent = false;

bool (*memory_giver)() = nullptr;

// Called by operator new, which then tries again.
void give_back() {
  if (memory_giver != nullptr && memory_giver()) return;
  if (!reserve) throw std::bad_alloc();
  reserve.reset();
  spent = true;
}

}  // namespace

void return_large_blocks() {
  mallopt(M_MMAP_THRESHOLD, large_block_bytes);
}

bool hold_memory_reserve() {
  std::set_new_handler(nullptr);
  if (!reserve) reserve.reset(new (std::nothrow) std::byte[reserve_bytes]);
  std::set_new_handler(give_back);
  spent = spent && !reserve;
  return reserve != nullptr;
}

void set_memory_giver(bool (*giver)()) {
  memory_giver = giver;
}

bool memory_reserve_is_spent() {
  return spent;
}

}  // namespace torve
