// Any text is taken as a spectrum file: a header line, lines to skip (the first byte), bins. What
// was read and is written again reads back as the same text.

#include <vector>

#include "app/signal/sample_file.hpp"
#include "base/number_text.hpp"
#include "memory_file.hpp"

namespace {

using namespace torve;

std::vector<float> bins_of(const std::string& name, int skipped, std::size_t most, int* size) {
  const FilePtr file = open_file(name, "rb");
  SampleReader reader(file.get(), pane_line_size);
  if (const auto header = reader.next_line()) *size = spectrum_size(*header).value_or(1);
  while (skipped-- > 0 && reader.skip_line()) {
  }
  std::vector<float> bins(most);
  bins.resize(reader.read(bins));
  return bins;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const MemoryFile file;
  file.fill({data + 1, size - 1});
  int k = 1;
  const std::vector<float> bins = bins_of(file.name(), data[0], size, &k);
  file.fill({});
  OutputFile output(file.name());
  write_spectrum(output, k, bins);
  int k_again = 0;
  if (!output.finish()) std::abort();
  const std::vector<float> again = bins_of(file.name(), 0, size, &k_again);
  if (k_again != k || again.size() != bins.size()) std::abort();
  for (std::size_t i = 0; i < bins.size(); ++i) {
    if (!same_fixed6(static_cast<double>(bins[i]), static_cast<double>(again[i]))) std::abort();
  }
  return 0;
}
