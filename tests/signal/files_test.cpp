#include <bit>
#include <random>
#include <sys/stat.h>

#include "app/signal/sample_file.hpp"
#include "base/number_text.hpp"
#include "base/typed_names.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

TEST(NumberText, IsThatOfPrintf) {
  std::vector<double> values = {0.0,       -0.0,         0.5e-6, 1.5e-6,          2.5e-6, 0.1234565,
                                1.0000005, 2199999999.5, 2.2e9,  8388608.0000005, 1e300,  5e-324};
  std::mt19937_64 random(11);
  while (values.size() < 150'000) {
    values.push_back(static_cast<double>(random() % 4'000'000'000) * 0.5e-6);
    // A bit of the exponent is 0, so all are finite.
    values.push_back(std::bit_cast<double>(random() & ~(1ULL << 52)));
    const auto bits = static_cast<unsigned>(random()) & ~(1U << 23);
    values.push_back(static_cast<double>(std::bit_cast<float>(bits)));
  }
  for (const double value : values) {
    char ours[longest_fixed6], theirs[longest_fixed6 + 1];
    std::snprintf(theirs, sizeof theirs, "%f", value);
    EXPECT_EQ(std::string(ours, put_fixed6(ours, value)), theirs);
  }
  const auto decimal = [](std::int64_t value) {
    char text[longest_decimal];
    return std::string(text, put_decimal(text, value));
  };
  for (std::int64_t power = 1, digits = 1; digits < 19; power *= 10, ++digits) {
    for (const std::int64_t value : {power - 1, power, -power})
      EXPECT_EQ(decimal(value), std::to_string(value));
  }
  EXPECT_EQ(decimal(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(SampleFile, BudgetsAndValues) {
  for (const auto& [text, budget] :
       {std::pair("all", 100'000), {"20000", 20000}, {"-5", 0}, {"99999999999", 100'000}})
    EXPECT_EQ(sample_budget(text), budget) << text;
  const TemporaryDirectory directory;
  write_file("a.res", "5\n0 1.5\n\n12.5\n3 x\n4 2");
  EXPECT_EQ(read_sample_file("a.res"), (std::vector<float>{0, 1.5, 1.5, .5, .5, 2}));
  EXPECT_EQ(read_sample_file("/dev/zero"), std::nullopt) << "would never end";
}

// Larger than the buffer, so that it is written in parts.
bool write_numbers(const std::string& name) {
  OutputFile file(name);
  write_samples(file, std::vector<float>(OutputFile::buffer_size / 8, 1));
  return file && file.finish();
}

TEST(OutputFile, LinksAndPermissionsStay) {
  const TemporaryDirectory directory;
  write_file("old", "good");
  chmod("old", 0640);
  std::filesystem::create_symlink("old", "link");
  for (const char* name : {"new", "link"})
    EXPECT_TRUE(write_numbers(name));
  EXPECT_TRUE(std::filesystem::is_symlink("link"));
  EXPECT_EQ(static_cast<int>(std::filesystem::status("old").permissions()), 0640);
  EXPECT_EQ(read_file("old"), read_file("new"));
}

// What was typed is Latin-1, names are UTF-8: \xE4 and \xC3\xA4.
TEST(OutputFile, TypedNamesMeanFilesOfTheirLetters) {
  const struct {
    const char *existing, *typed, *written;
  } cases[] = {{"m\xC3\xA4", "m\xE4", "m\xC3\xA4"},
               {"m\xE4", "m\xE4", "m\xC3\xA4"},
               {"m\xC3\xA4", "m\xC3\xA4", "m\xC3\xA4"},
               {"\xC3\xB6\xC3\xA9", "\xF6\xE9", "\xC3\xB6\xC3\xA9"},
               {"plain", "plain", "plain"}};
  for (const bool typed : {true, false}) {
    take_names_as_typed(typed);
    for (const auto& test : cases) {
      const TemporaryDirectory directory;
      write_file(test.existing, "old");
      const bool is_there = typed || test.existing == std::string(test.typed);
      EXPECT_EQ(open_regular_file(test.typed, "r") != nullptr, is_there) << test.typed;
      EXPECT_EQ(input_failure(test.typed).cause, is_there ? Cause::unreadable : Cause::no_file);
      const std::string written = typed ? test.written : test.typed;
      EXPECT_EQ(same_file(test.typed, test.typed), test.existing == written) << test.typed;
      OutputFile file(test.typed, OutputFile::Existing::empty_at_once);
      EXPECT_TRUE(file && file.finish());
      EXPECT_EQ(read_file(written), "") << test.typed;
      if (test.existing == written) {
        EXPECT_EQ(file.kept_as(), test.typed + std::string(".bak"));
        EXPECT_EQ(read_file(written + ".bak"), "old");
      }
    }
  }
  take_names_as_typed(false);
}

}  // namespace
}  // namespace torve
