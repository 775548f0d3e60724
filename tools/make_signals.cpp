// make_signals OUTPUT_DIRECTORY
//
// Writes the sample files the program shows at its start: bhld1.res and bhld2.res, one stroke of a
// bell in two recordings, and compar3.res, what the second does not explain of the first.

#include <cstdio>
#include <exception>
#include <filesystem>

#include "bell.hpp"
#include "output.hpp"

int main(int argc, char** argv) {
  using namespace torve;
  if (argc != 2) {
    std::fputs("usage: make_signals OUTPUT_DIRECTORY\n", stderr);
    return 2;
  }
  try {
    const std::filesystem::path directory = argv[1];
    std::filesystem::create_directories(directory);
    const BellRecordings bell = record_bell();
    write_whole_file(directory / "bhld1.res", sample_text(bell.first));
    write_whole_file(directory / "bhld2.res", sample_text(bell.second));
    write_whole_file(directory / "compar3.res",
                     sample_text(match_residual(bell.first, bell.second, second_start)));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_signals: %s\n", error.what());
    return 1;
  }
  return 0;
}
