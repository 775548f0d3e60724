#include <bit>
#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

#include "app/signal/sample_file.hpp"
#include "base/number_text.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

std::string fixed6(double value) {
  char text[longest_fixed6];
  return {text, put_fixed6(text, value)};
}

std::string printf6(double value) {
  char text[longest_fixed6 + 1];
  std::snprintf(text, sizeof text, "%f", value);
  return text;
}

TEST(NumberText, IsThatOfPrintf) {
  for (const double value : {0.0, -0.0, 0.5e-6, 1.5e-6, 2.5e-6, 0.1234565, 1.0000005, 2199999999.5,
                             2.2e9, 8388608.0000005, 1e300, 5e-324, -HUGE_VAL}) {
    EXPECT_EQ(fixed6(value), printf6(value));
  }
  std::mt19937_64 random(11);
  for (int i = 0; i < 50'000; ++i) {
    const auto halves = static_cast<double>(random() % 4'000'000'000) * 0.5e-6;
    const auto any = std::bit_cast<double>(random());
    const auto single = static_cast<double>(std::bit_cast<float>(static_cast<unsigned>(random())));
    for (const double value : {halves, any, single}) {
      ASSERT_TRUE(std::isnan(value) || fixed6(value) == printf6(value)) << "seed 11, " << value;
    }
  }
}

TEST(SampleFile, Budgets) {
  const std::pair<const char*, int> cases[] = {{"all", most_samples},
                                               {"20000", 20000},
                                               {"100001", most_samples},
                                               {"0", 0},
                                               {"-5", 0},
                                               {"abc", 0},
                                               {"99999999999", most_samples}};
  for (const auto& [text, budget] : cases)
    EXPECT_EQ(sample_budget(text), budget) << text;
}

TEST(SampleFile, LinesWithoutAValueRepeat) {
  const TemporaryDirectory directory;
  write_file("a.res", "5\n0 1.5\n\n12.5\n3 x\n4 2");
  EXPECT_EQ(read_sample_file("a.res"), (std::vector<float>{0, 1.5, 1.5, .5, .5, 2}));
  EXPECT_EQ(read_sample_file("/dev/zero"), std::nullopt) << "would never end";
}

// Larger than the buffer, so that it is written in parts.
bool write_numbers(const std::string& name) {
  OutputFile file(name);
  write_samples(file, std::vector<float>(5000, 1));
  return file && file.finish();
}

TEST(OutputFile, OldContentStaysUntilTheNewIsComplete) {
  const TemporaryDirectory directory;
  write_file("old", "good");
  std::filesystem::create_hard_link("old", "hard");
  std::filesystem::create_symlink("single", "link");
  write_file("single", "good");
  chmod("single", 0640);
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small = {20'000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  for (const char* name : {"old", "link", "new"}) {
    EXPECT_EQ(printed_by([&] { EXPECT_FALSE(write_numbers(name)); }),
              std::string("could not write ") + name + ": File too large\n");
  }
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(read_file("hard") + read_file("link"), "goodgood");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 4) << "nothing left over";

  for (const char* name : {"new", "old", "link"}) {
    EXPECT_TRUE(write_numbers(name));
    EXPECT_EQ(read_file(name).size(), read_file("new").size());
  }
  EXPECT_EQ(read_file("hard"), read_file("new")) << "both names still lead to one file";
  EXPECT_TRUE(std::filesystem::is_symlink("link"));
  struct stat info = {};
  stat("single", &info);
  EXPECT_EQ(info.st_mode & 0777, 0640U);
  EXPECT_FALSE(write_numbers("no/such/directory"));
  EXPECT_NE(printed_by([] { EXPECT_FALSE(write_numbers("/dev/full")); }), "");
}

}  // namespace
}  // namespace torve
