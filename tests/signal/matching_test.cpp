#include "app/signal/matching.hpp"

#include "bench/literal.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

struct Outcome {
  int result;
  int offset;
  float scale;
  std::string printed;
};

Outcome match(int start, float scale, const std::string& out = "c", int mode = 1,
              const std::string& samples = "all") {
  Outcome outcome = {-1, 0, scale, ""};
  float mean = 0;
  outcome.printed = printed_by([&] {
    outcome.result =
        my_correlation("a", "b", out, &mean, &outcome.offset, &outcome.scale, mode, start, samples);
  });
  return outcome;
}

std::vector<float> shifted(const std::vector<float>& x, std::size_t by) {
  std::vector<float> result(x.begin() + static_cast<std::ptrdiff_t>(by), x.end());
  result.insert(result.end(), x.begin(), x.begin() + static_cast<std::ptrdiff_t>(by));
  return result;
}

TEST(Matching, CyclicShift) {
  const TemporaryDirectory directory;
  const auto whole = integers(recorded(20'000, 4), 30'000);
  literal::write("a", whole);
  literal::write("b", shifted(whole, 500));
  const Outcome found = match(0, 1);
  EXPECT_EQ(found.result, 0);
  EXPECT_EQ(found.offset, -500);
  EXPECT_EQ(found.scale, 1.0F);
  EXPECT_NE(found.printed.find("offset_best=500 ave3min=0.000000 samples=18899\n"),
            std::string::npos)
      << found.printed;
  EXPECT_NE(found.printed.find("scale_best=1.000000 ave3min=0.000000 offset=500\n"
                               "counter1=20000 counter2=20000 counter=19500\n"),
            std::string::npos);
  EXPECT_NE(read_file("c").find("nan"), std::string::npos) << "nothing is left to scale to one";
}

TEST(Matching, DigitsOfTheLiteralSearch) {
  const TemporaryDirectory directory;
  const auto one = sine_in_noise(11'500, 8000, 1);
  // All scales between the two levels are equally good, but for rounding.
  std::vector<float> levels(10'000, 0.95F);
  std::fill(levels.begin() + 5'000, levels.end(), 1.05F);
  const std::pair<std::vector<float>, std::vector<float>> pairs[] = {
      {one, shifted(recorded(10'050, 2), 77)},
      {recorded(10'000, 2), recorded(10'000, 2)},
      {std::vector<float>(10'500, 5), std::vector<float>(10'000, -5)},
      {levels, std::vector<float>(10'000, 3)},
  };
  for (const auto& [a, b] : pairs) {
    literal::write("a", a);
    literal::write("b", b);
    // Within reach, beyond it on the low side, and where the first signal ends.
    for (const int start : {300, 9'000}) {
      const float scale = start == 300 ? 0.9F : -2.0F;
      const std::string lines =
          printed_by([&] { literal::my_correlation("a", "b", "c", start, scale); });
      std::filesystem::rename("c", "expected");
      const Outcome found = match(start, scale);
      EXPECT_EQ(found.printed.substr(found.printed.find('\n') + 1), lines);
      ASSERT_EQ(read_file("c"), read_file("expected")) << start;
    }
  }
}

TEST(Matching, WhatIsRefused) {
  const TemporaryDirectory directory;
  literal::write("a", recorded(10'000, 2));
  literal::write("b", recorded(10'000, 3));
  write_file("c", "good");
  EXPECT_EQ(match(-5, 1).printed,
            "in my_correlation, start_offset=-5\nstart_offset must be nonnegative\n");
  EXPECT_EQ(match(-5, 1).result, 0);
  for (const char* samples : {"9999", "0", "-5", "abc"})
    EXPECT_EQ(match(0, 1, "c", 1, samples).result, 1) << samples;
  EXPECT_EQ(match(0, 1, "no/c").result, 1);
  for (const Outcome& none : {match(50'000, 1), match(0, 1e30F), match(0, NAN)}) {
    EXPECT_EQ(none.result, 1);
    EXPECT_EQ(none.printed.find("offset_best"), std::string::npos);
  }
  EXPECT_EQ(read_file("c"), "good");
}

TEST(Matching, OverAnInputAndByShifts) {
  const TemporaryDirectory directory;
  const auto b = recorded(10'000, 3);
  literal::write("a", shifted(b, 9'990));
  literal::write("b", b);
  const Outcome shifts = match(0, 1, "c", 0);
  EXPECT_TRUE(shifts.printed.ends_with(" j1=10 offset=10\ndone\n")) << shifts.printed;
  EXPECT_EQ(literal::read("c").size(), 9'990U);
  EXPECT_EQ(match(0, 1, "c").result, 0);
  EXPECT_EQ(match(0, 1, "a").result, 0);
  EXPECT_EQ(read_file("a"), read_file("c")) << "the input is read before it is replaced";
}

}  // namespace
}  // namespace torve
