// Reusable memory for what window objects save and restore.
//
// Up to 35 blocks stay registered when they are returned, so that opening and closing the same
// menu again and again does not go back to the system. The first free slot that is large enough
// serves a request; a block that had to be allocated anew takes over the first free slot.
#pragma once

#include <cstddef>
#include <cstdint>

namespace torve {

inline constexpr int pool_slots = 35;
inline constexpr int data_node_bytes = 516;

struct PoolSlot {
  void* pointer = nullptr;  // the block that the slot owns
  int size = 0;             // its bytes
  int free = 1;             // 0: lent out
};

/// A node of a chain of data; the last node of a chain links to itself.
struct DataNode {
  DataNode* next;
  std::int32_t count;
  std::uint8_t data[500];
};
static_assert(sizeof(DataNode) <= data_node_bytes);

// State.
extern PoolSlot b_reg[pool_slots];
extern int b_counter;  // blocks lent out and not yet returned
extern int mcounter;   // calls of the system allocator

/// Shows on the screen what initPool could not allocate (bytes), and that dalloc got no memory.
struct PoolReporters {
  void (*start_failed)(int size);
  void (*no_data_node)();
};
void set_pool_reporters(const PoolReporters& reporters);

/// The system allocator, std::malloc at start; tests put one in that fails.
using PoolAllocator = void* (*)(std::size_t size);
void set_pool_allocator(PoolAllocator replacement);

/// Fills the registry anew: num1 free blocks of size1 bytes, num2 of size2, the other slots empty
/// and free; says "allocating num1 in initPool\n" or "... num2 ..." for each block. Blocks that
/// lay free in it go back to the system. Returns 0, or 1 after the failure has been shown.
[[nodiscard]] int initPool(int num1, int size1, int num2, int size2);

/// Every block of the registry back to the system.
void release_pool();

/// A block of at least `size` bytes, to be returned with b_free; null after no_memory(), or after
/// illegal_pointer(23) when the slot that fits owns no block.
[[nodiscard]] void* balloc(int size);

/// Takes a block back (null: nothing happens). Returns 0, or 1 after "error in b_free or
/// balloc\n" when more blocks have come back than were lent.
int b_free(void* block);

// Not used by the workbench itself.

/// A data node with next and count 0; null when there is no memory.
[[nodiscard]] DataNode* dalloc();

/// Returns the nodes of a chain but for its last one, which *head then names.
void free_datap(DataNode** head);

/// Returns every node of a chain.
void free_data(DataNode* first);

}  // namespace torve
