// make_signals OUTPUT_DIRECTORY
//
// Writes the sample files the program shows at its start: bhld1.res and bhld2.res, one stroke of a
// bell in two recordings, and compar3.res, what the second does not explain of the first. The last
// is written by the comparison that the workbench makes into its third pane. bell.wav is the same
// two recordings side by side, as a sound file of two channels.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "app/signal/matching.hpp"
#include "app/signal/sample_file.hpp"
#include "bell.hpp"
#include "output.hpp"
#include "stereo_wav.hpp"

namespace {

using namespace torve;

constexpr float start_scale = 0.7F;  // of the second microphone

bool write_signal(const std::string& name, const std::vector<double>& values) {
  OutputFile file(name);
  std::int64_t index = 0;
  for (const double value : values)
    write_sample(file, index++, value);
  return file && file.finish();
}

bool write_signals(const std::filesystem::path& directory) {
  const std::string first = directory / "bhld1.res";
  const std::string second = directory / "bhld2.res";
  const BellRecordings bell = record_bell();
  float mean = 0;
  float scale = start_scale;
  int offset = 0;
  write_whole_file(directory / "bell.wav", stereo_wav(at_48000(bell.first), at_48000(bell.second)));
  return write_signal(first, bell.first) && write_signal(second, bell.second) &&
         my_correlation(first, second, directory / "compar3.res", &mean, &offset, &scale, 1,
                        second_start, "all") == 0;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2) {
    std::fputs("usage: make_signals OUTPUT_DIRECTORY\n", stderr);
    return 2;
  }
  std::error_code ignored;  // the files will say so
  std::filesystem::create_directories(argv[1], ignored);
  // A build need not know how the match goes.
  if (std::freopen("/dev/null", "w", stdout) == nullptr || !write_signals(argv[1])) {
    std::fputs("make_signals: cannot write the signals\n", stderr);
    return 1;
  }
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "make_signals: %s\n", error.what());
  return 1;
}
