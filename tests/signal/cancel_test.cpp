// Every analysis, ended wherever it asks whether to go on: files and the last spectrum are as if it
// had never been begun.

#include <map>

#include "app/signal/au_file.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/sound_import.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/progress.hpp"
#include "bench/literal.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

int asked_so_far, goes_on_until;
double done_so_far;

const Watcher counter = {
    .begin = [](const std::string&) { asked_so_far = 0, done_so_far = 0; },
    .goes_on =
        [](double done) {
          EXPECT_TRUE(done >= done_so_far && done <= 1) << done << " behind " << done_so_far;
          done_so_far = done;
          return ++asked_so_far != goes_on_until;
        },
    .end = [] {},
};

using Files = std::map<std::string, std::string>;

Files files() {
  Files all;
  for (const auto& entry : std::filesystem::directory_iterator("."))
    all[entry.path().filename()] = read_file(entry.path());
  return all;
}

Outcome quietly(Outcome (*analysis)()) {
  Outcome outcome;
  printed_by([&] { outcome = analysis(); });
  return outcome;
}

Outcome watch(Outcome (*analysis)(), int until) {
  goes_on_until = until;
  set_watcher(&counter);
  Outcome outcome = quietly(analysis);
  set_watcher(nullptr);
  return outcome;
}

void prepare() {
  EXPECT_TRUE(allocate_work_buffer());
  EXPECT_TRUE(quietly([] { return transform_file("a", "a.spe", "all"); }).is_done());
}

std::string filtered() {
  const auto filter = [] { return filter_stored_spectrum("y", 100, 2900, filter_band_pass); };
  EXPECT_TRUE(quietly(filter).is_done());
  std::string result = read_file("y");
  std::filesystem::remove("y");
  return result;
}

TEST(Cancelling, LeavesFilesAndTheLastSpectrum) {
  const TemporaryDirectory directory;
  // Of square waves coefficients stay open until a filter asks for them, and take long then.
  std::vector<float> square(10'100, 20'000);
  for (std::size_t i = 0; i < square.size(); ++i)
    square[i] *= i / 50 % 2 == 0 ? 1.0F : -1.0F;
  literal::write("a", square);
  literal::write("b", integers(recorded(12'000, 4), 32'000));
  const struct {
    const char* output;
    Outcome (*run)();
  } analyses[] = {
      {"o.res", [] { return autocorrelate_file("b", "o.res"); }},
      {"new", [] { return correlate_files("a", "b", "new"); }},
      {"o.res",
       [] {
         Match match;
         return match_files({.path1 = "a", .path2 = "b", .path3 = "o.res", .mode = 0}, &match);
       }},
      {"a", [] { return transform_file("b", "a", "all"); }},
      {"o.res", [] { return filter_stored_spectrum("o.res", 3000, 22'000, filter_out_of_band); }},
      {"new", [] { return filter_stored_spectrum("new", 100, 5000, filter_band_pass); }},
      {"o.res", [] { return convert_to_au("a", "o.res"); }},
      {"new", [] { return cut_au("b.au", "new", 0, 1); }},
      {"new",
       [] {
         Imported imported;
         return import_sound("b.wav", "new", {.channel = 1}, &imported);
       }},
      {"b.wav",
       [] {
         Exported exported;
         return export_sound("b", "b.wav", &exported);
       }},
  };
  Exported exported;
  EXPECT_TRUE(export_sound("b", "b.wav", &exported).is_done());
  EXPECT_TRUE(quietly([] { return convert_to_au("b", "b.au"); }).is_done());
  prepare();
  const std::string band = filtered();
  write_file("o.res", "old");
  const Files before = files();
  for (const auto& analysis : analyses) {
    prepare();
    EXPECT_TRUE(watch(analysis.run, 0).is_done()) << analysis.output;
    const int last = asked_so_far;
    EXPECT_GE(last, 2) << analysis.output;
    for (const int until : {1, last / 2, last}) {
      std::filesystem::remove("new");
      for (const auto& [name, content] : before)
        write_file(name, content);
      prepare();
      const Outcome outcome = watch(analysis.run, until);
      EXPECT_EQ(sentence(outcome), "Cancelled: " + std::string(analysis.output) + " is as it was");
      EXPECT_TRUE(files() == before) << analysis.output << ' ' << until;
      EXPECT_TRUE(filtered() == band) << analysis.output << ' ' << until;
    }
  }
  release_work_buffer();
}

}  // namespace
}  // namespace torve
