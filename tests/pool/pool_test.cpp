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
  void* start = b_reg[0].pointer;
  EXPECT_EQ(balloc(1200), start);
  void* second = balloc(100);
  EXPECT_EQ(b_reg[1].pointer, second) << "takes over the first free slot";
  EXPECT_EQ(b_free(second), 0);
  void* third = balloc(101);
  EXPECT_NE(third, second) << "too small for this one";
  EXPECT_EQ(mcounter, 3);
  EXPECT_EQ(b_free(third), 0);
  EXPECT_EQ(balloc(60), third);
  EXPECT_EQ(b_counter, 2);
}

TEST_F(PoolTest, OddReturns) {
  void* block = balloc(10);
  EXPECT_EQ(b_free(nullptr), 0);
  EXPECT_EQ(b_free(block), 0);
  EXPECT_EQ(b_free(block), 0) << "a second return does not count";
  EXPECT_EQ(b_counter, 0);
  EXPECT_EQ(b_free(std::malloc(5)), 0) << "never registered: goes to the system";
  EXPECT_EQ(b_counter, -1);
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(b_free(b_reg[0].pointer), 1); }),
            "error in b_free or balloc\n");
}

TEST_F(PoolTest, BlocksBeyondTheRegistry) {
  std::vector<void*> blocks;
  for (int i = 0; i < 50; ++i)
    blocks.push_back(balloc(2000 + i));
  EXPECT_EQ(b_counter, 50);
  for (void* block : blocks)
    EXPECT_EQ(b_free(block), 0);
  EXPECT_EQ(b_counter, 0);
}

TEST_F(PoolTest, NoMemory) {
  static int failed_size;
  set_pool_reporters({.start_failed = [](int size) { failed_size = size; }, .no_data_node = [] {}});
  set_pool_allocator([](std::size_t) -> void* { return nullptr; });
  EXPECT_EQ(printed_by([] { EXPECT_EQ(balloc(5000), nullptr); }), "no_memory\n");
  EXPECT_EQ(b_counter, 0);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(initPool(1, 0, 2, 70), 1); }),
            "allocating num1 in initPool\nallocating num2 in initPool\n");
  EXPECT_EQ(failed_size, 70);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(balloc(0), nullptr); }), "illegal_pointer\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(dalloc(), nullptr); }), "no_memory\n");
}

TEST_F(PoolTest, ChainsOfDataNodes) {
  DataNode* nodes[3] = {dalloc(), dalloc(), dalloc()};
  nodes[0]->next = nodes[1];
  nodes[1]->next = nodes[2];
  nodes[2]->next = nodes[2];
  DataNode* head = nodes[0];
  free_datap(&head);
  EXPECT_EQ(head, nodes[2]) << "the last node is kept";
  EXPECT_EQ(b_counter, 1);
  free_data(head);
  EXPECT_EQ(b_counter, 0);
}

}  // namespace
}  // namespace torve
