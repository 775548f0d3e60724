#include "app/signal/work_buffer.hpp"

#include <cstdint>
#include <memory>
#include <new>

namespace torve {

void* pointer1 = nullptr;

namespace {
std::unique_ptr<std::uint32_t[]> block;
}

bool allocate_work_buffer() {
  block.reset(new (std::nothrow) std::uint32_t[work_buffer_bytes / sizeof(std::uint32_t)]());
  pointer1 = block.get();
  return pointer1 != nullptr;
}

void release_work_buffer() {
  block.reset();
  pointer1 = nullptr;
}

}  // namespace torve
