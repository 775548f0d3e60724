// Any text is taken as a spectrum file: a header line, lines to skip (the first byte), bins. What
// was read is written as a spectrum file again and must read back as the same text.

#include <vector>

#include "app/signal/sample_file.hpp"
#include "base/files.hpp"
#include "memory_file.hpp"

namespace {

using namespace torve;

struct Bins {
  int size = 0;
  std::vector<float> values;
};

Bins read(const std::string& name, int skipped, std::size_t most) {
  const FilePtr file = open_file(name, "rb");
  SampleReader reader(file.get(), pane_line_size);
  Bins bins;
  const auto header = reader.next_line();
  if (!header) return bins;
  bins.size = spectrum_size(*header).value_or(1);
  for (int i = 0; i < skipped; ++i) {
    if (!reader.skip_line()) return bins;
  }
  bins.values.resize(most);
  bins.values.resize(reader.read(bins.values));
  return bins;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const MemoryFile input;
  static const MemoryFile output;
  input.fill({data + 1, size - 1});
  const Bins first = read(input.name(), data[0], size);
  std::vector<Bins> again;
  for (const Bins* bins = &first; again.size() < 2; bins = &again.back()) {
    output.fill({});
    OutputFile file(output.name());
    write_spectrum(file, bins->size, bins->values);
    if (!file.finish()) std::abort();
    again.push_back(read(output.name(), 0, size));
    // The second text must be a fixed point; the first has more digits than six decimals.
    if (again.back().size != first.size) std::abort();
    if (again.back().values.size() != first.values.size()) std::abort();
  }
  for (std::size_t i = 0; i < first.values.size(); ++i) {
    const float once = again[0].values[i];
    const float twice = again[1].values[i];
    if (once != twice && (once == once || twice == twice)) std::abort();
  }
  return 0;
}
