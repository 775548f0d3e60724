#include "pool/pool.hpp"

#include "support/screen.hpp"

namespace torve {
namespace {

class PoolTest : public ::testing::Test {
 protected:
  PoolTest() {
    printed_by([] { EXPECT_EQ(initPool(1, 1200, 0, 0), 0); });
  }
  ~PoolTest() override {
    set_pool_allocator(std::malloc);
    for (const PoolSlot& slot : b_reg)
      b_free(slot.free == 0 ? slot.pointer : nullptr);
    release_pool();
  }
};

TEST_F(PoolTest, FirstFitAndReuse) {
  EXPECT_EQ(balloc(1200), b_reg[0].pointer);
  void* second = balloc(100);
  EXPECT_EQ(b_reg[1].pointer, second) << "takes over the first free slot";
  b_free(second);
  void* third = balloc(101);
  EXPECT_NE(third, second) << "too small for this one";
  b_free(third);
  EXPECT_EQ(balloc(60), third);
  EXPECT_EQ(std::pair(mcounter, b_counter), std::pair(3, 2));
}

TEST_F(PoolTest, BlocksBeyondTheRegistryAndOddReturns) {
  std::vector<void*> blocks(50);
  for (void*& block : blocks)
    block = balloc(2000);
  EXPECT_EQ(b_counter, 50);
  blocks.insert(blocks.end(), {nullptr, b_reg[0].pointer});  // a second return does not count
  for (void* block : blocks)
    EXPECT_EQ(b_free(block), 0);
  EXPECT_EQ(b_free(std::malloc(5)), 0) << "never registered: goes to the system";
  EXPECT_EQ(b_counter, -1);
  EXPECT_EQ(printed_by([&] { b_free(b_reg[0].pointer); }), "error in b_free or balloc\n");
}

TEST_F(PoolTest, NoMemory) {
  static int failed_size;
  set_pool_reporters({.start_failed = [](int size) { failed_size = size; }, .no_data_node = [] {}});
  set_pool_allocator([](std::size_t) -> void* { return nullptr; });
  EXPECT_EQ(printed_by([] { EXPECT_EQ(balloc(5000), nullptr); }), "no_memory\n");
  printed_by([] { EXPECT_EQ(initPool(1, 0, 2, 70), 1); });
  EXPECT_EQ(failed_size, 70);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(balloc(0), nullptr); }), "illegal_pointer\n");
  EXPECT_EQ(b_counter, 0);
}

TEST_F(PoolTest, ChainsOfDataNodes) {
  DataNode* nodes[3] = {dalloc(), dalloc(), dalloc()};
  for (int i = 0; i < 3; ++i)
    nodes[i]->next = nodes[std::min(i + 1, 2)];
  DataNode* head = nodes[0];
  free_datap(&head);
  EXPECT_EQ(head, nodes[2]) << "the last node is kept";
  free_data(head);
  EXPECT_EQ(b_counter, 0);
}

}  // namespace
}  // namespace torve
