#include "pool/pool.hpp"

#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "base/errors.hpp"

namespace torve {

PoolSlot b_reg[pool_slots];
int b_counter = 0;
int mcounter = 0;

namespace {

constexpr int slot_without_block = 23;  // illegal_pointer code

PoolReporters report = {[](int) {}, [] {}};
PoolAllocator system_allocate = std::malloc;

void* allocate(int size) {
  ++mcounter;
  return system_allocate(static_cast<std::size_t>(size));
}

// Slots first .. first + count - 1 get free blocks of `size` bytes; false when one cannot be had.
bool fill_slots(int first, int count, int size, const char* what) {
  for (int i = first; i < first + count && i < pool_slots; ++i) {
    std::printf("allocating %s in initPool\n", what);
    b_reg[i].size = size;
    if (size < 1) continue;
    b_reg[i].pointer = allocate(size);
    if (b_reg[i].pointer == nullptr) {
      b_reg[i].size = 0;
      return false;
    }
  }
  return true;
}

PoolSlot* find_slot(auto matches) {
  for (PoolSlot& slot : b_reg) {
    if (matches(slot)) return &slot;
  }
  return nullptr;
}

void* lend_new_block(int size) {
  void* block = allocate(size);
  if (block == nullptr) {
    no_memory();
    return nullptr;
  }
  ++b_counter;
  PoolSlot* slot = find_slot([](const PoolSlot& s) { return s.free == 1; });
  if (slot == nullptr) return block;
  std::free(slot->pointer);
  *slot = {block, size, 0};
  return block;
}

}  // namespace

void set_pool_reporters(const PoolReporters& reporters) {
  report = reporters;
}

void set_pool_allocator(PoolAllocator replacement) {
  system_allocate = replacement;
}

int initPool(int num1, int size1, int num2, int size2) {
  mcounter = b_counter = 0;
  release_pool();
  const bool first_part = fill_slots(0, num1, size1, "num1");
  if (first_part && fill_slots(num1, num2, size2, "num2")) return 0;
  report.start_failed(first_part ? size2 : size1);
  return 1;
}

void release_pool() {
  for (PoolSlot& slot : b_reg) {
    if (slot.free == 1) std::free(slot.pointer);
    slot = {};
  }
}

void* balloc(int size) {
  PoolSlot* slot = find_slot([size](const PoolSlot& s) { return s.free == 1 && s.size >= size; });
  if (slot == nullptr) return lend_new_block(size);
  slot->free = 0;
  if (slot->pointer == nullptr) {
    illegal_pointer(slot_without_block);
    return nullptr;
  }
  ++b_counter;
  return slot->pointer;
}

int b_free(void* block) {
  if (block == nullptr) return 0;
  PoolSlot* slot = find_slot([block](const PoolSlot& s) { return s.pointer == block; });
  if (slot == nullptr) {
    std::free(block);
    --b_counter;
    return 0;
  }
  if (slot->free == 0) {
    --b_counter;
    slot->free = 1;
  }
  if (b_counter >= 0) return 0;
  std::printf("error in b_free or balloc\n");
  return 1;
}

DataNode* dalloc() {
  auto* node = static_cast<DataNode*>(balloc(data_node_bytes));
  if (node == nullptr) {
    report.no_data_node();
    return nullptr;
  }
  node->next = nullptr;
  node->count = 0;
  return node;
}

void free_datap(DataNode** head) {
  while (*head != nullptr && (*head)->next != nullptr && (*head)->next != *head) {
    DataNode* next = (*head)->next;
    b_free(*head);
    *head = next;
  }
}

void free_data(DataNode* first) {
  free_datap(&first);
  b_free(first);
}

}  // namespace torve
