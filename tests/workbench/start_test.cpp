// What is said when there is no memory to start with.

#include "app/pool_failure.hpp"
#include "dialogs/player.hpp"

namespace torve {
namespace {

TEST_F(DialogTest, TheStartSaysWhatThereIsNoMemoryFor) {
  install_pool_reporters();
  set_pool_allocator([](std::size_t) -> void* { return nullptr; });
  type("k");
  EXPECT_EQ(initPool(1, 5000, 0, 0), 1);
  set_pool_allocator(std::malloc);
  EXPECT_TRUE(user_events.empty()) << "a key ends it";
  const std::uint32_t white = colour_pixel(15);
  EXPECT_EQ(text_at(200, 260, 24, white), "initPool, call to malloc");
  EXPECT_EQ(text_at(200, 271, 18, white), "failed, size= 5000");
}

}  // namespace
}  // namespace torve
