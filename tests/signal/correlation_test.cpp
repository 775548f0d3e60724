#include "app/signal/correlation.hpp"

#include "bench/literal.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

TEST(Correlation, SmallExamples) {
  const TemporaryDirectory directory;
  write_file("123", "0 1\n1 2\n2 3\n");
  write_file("124", "0 1000\n1 2000\n2 4000\n");
  write_file("6", "0 1\n1 2\n2 3\n3 4\n4 5\n5 6\n");
  write_file("none", "");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(autocorrelation("123", "1"), 0); }),
            "in autocorrelation\ngot ave and variance\ndone\n");
  EXPECT_EQ(read_file("autocor1.res"), "0 0.666667\n1 0.000000\n2 -1.000000\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(correlation("6", "123", "3"), 0); }),
            "in correlation\ngot ave1=3.500000 and var1=2.916667 counter1=6\n"
            "got ave2=2.000000 and var2=0.666667 counter2=3\ndone\n");
  EXPECT_EQ(read_file("corre3.res"), "0 0.666667\n1 -0.750000\n2 -2.500000\n");
  EXPECT_NE(printed_by([] {
              correlation("123", "6", "3");
            }).find("got ave2=1.000000 and var2=9.166667 counter2=6\n"),
            std::string::npos)
      << "missing values of the first signal count as 0";
  printed_by([] {
    EXPECT_EQ(autocorrelation("124", "2"), 0);
    EXPECT_EQ(autocorrelation("none", "4"), 0);
    EXPECT_EQ(autocorrelation("absent", "5"), 1);
    EXPECT_EQ(correlation("6", "absent", "5"), 1);
    EXPECT_EQ(autocorrelation("6", "/no/5"), 1);
  });
  EXPECT_EQ(read_file("autocor2.res"), "0 1555555.500000\n1 -55555.554688\n2 -2222222.250000\n");
  EXPECT_EQ(read_file("autocor4.res"), "");
}

TEST(Correlation, DigitsOfTheLiteralSums) {
  const TemporaryDirectory directory;
  for (const std::size_t n : {1U, 31U, 32U, 33U, 64U, 1000U, 3001U}) {
    literal::write("a", integers(sine_in_noise(n, 20'000, static_cast<unsigned>(n)), 1));
    literal::write("b", sine_in_noise(n + n / 3, 3, 9));
    for (const std::string one : {"a", "b"}) {
      const std::string two = one == "a" ? "b" : "a";
      std::string lines = printed_by([&] { correlation(one, two, "1"); });
      EXPECT_EQ("in correlation\n" +
                    printed_by([&] { literal::correlation(one, two, "expected"); }) + "done\n",
                lines);
      ASSERT_EQ(read_file("corre1.res"), read_file("expected")) << n;
      printed_by([&] { autocorrelation(one, "1"); });
      literal::autocorrelation(one, "expected");
      ASSERT_EQ(read_file("autocor1.res"), read_file("expected")) << n;
    }
  }
  literal::write("constant", std::vector<float>(100, 5));
  printed_by([] { autocorrelation("constant", "1"); });
  EXPECT_EQ(literal::read("autocor1.res"), std::vector<float>(100, 0));
}

}  // namespace
}  // namespace torve
