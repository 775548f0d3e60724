#include "wm/overlap.hpp"

#include <random>

#include <gtest/gtest.h>

namespace torve {
namespace {

// A is 10..40 by 10..40; B covers its middle in the stated directions only.
TEST(Overlap, PiecesInTheirOrder) {
  const Rect a = {10, 10, 40, 40};
  const Rect left = {10, 10, 20, 40};
  const Rect right = {30, 10, 40, 40};
  const struct {
    Rect b;
    std::vector<Rect> pieces;
  } cases[] = {{{50, 50, 60, 60}, {a}},
               {{40, 10, 60, 60}, {a}},  // touching is not covering
               {{0, 0, 50, 50}, {}},
               {{20, 20, 30, 30}, {left, {20, 30, 30, 40}, {20, 10, 30, 20}, right}},
               {{20, 0, 30, 30}, {left, {20, 30, 30, 40}, right}},
               {{20, 20, 30, 50}, {left, {20, 10, 30, 20}, right}},
               {{20, 0, 30, 50}, {left, right}},
               {{20, 20, 50, 30}, {left, {20, 30, 40, 40}, {20, 10, 40, 20}}},
               {{0, 20, 30, 30}, {right, {10, 30, 30, 40}, {10, 10, 30, 20}}},
               {{0, 0, 30, 30}, {right, {10, 30, 30, 40}}},
               {{0, 20, 50, 30}, {{10, 10, 40, 20}, {10, 30, 40, 40}}},
               {{0, 0, 50, 30}, {{10, 30, 40, 40}}}};
  for (const auto& c : cases)
    EXPECT_EQ(make_new_rectangles(a, c.b), c.pieces) << c.b.x1 << c.b.y1;
}

TEST(Overlap, PartsAreDisjointAndCoverWhatIsLeft) {
  std::mt19937 random(3);
  const auto any_rect = [&] {
    const int x = static_cast<int>(random() % 30);
    const int y = static_cast<int>(random() % 30);
    return Rect{x, y, x + 1 + static_cast<int>(random() % 15),
                y + 1 + static_cast<int>(random() % 15)};
  };
  for (int round = 0; round < 500; ++round) {
    std::vector<Cover> list;
    for (auto i = random() % 5; i > 0; --i)
      list.push_back({any_rect(), 1});
    const Rect whole = any_rect();
    const std::vector<Rect> parts = update_list(list, whole);
    for (int y = 0; y < 50; ++y) {
      for (int x = 0; x < 50; ++x) {
        bool left_free = whole.contains(x, y);
        for (const Cover& cover : list)
          left_free = left_free && !cover.rect.contains(x, y);
        int times = 0;
        for (const Rect& part : parts)
          times += part.contains(x, y) ? 1 : 0;
        ASSERT_EQ(times, left_free ? 1 : 0) << round << ": " << x << ' ' << y;
      }
    }
  }
}

}  // namespace
}  // namespace torve
