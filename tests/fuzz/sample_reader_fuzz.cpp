// Any text gives the values that fgets and sscanf give; the first byte chooses the line buffer.

#include <bit>
#include <vector>

#include "app/signal/sample_file.hpp"
#include "base/files.hpp"
#include "memory_file.hpp"

namespace {

std::vector<float> values_of(std::FILE* file, std::size_t line_size) {
  std::vector<float> values;
  std::vector<char> line(line_size);
  float value = 0;
  while (std::fgets(line.data(), static_cast<int>(line_size), file) != nullptr) {
    std::sscanf(line.data(), "%*d %f", &value);
    values.push_back(value);
  }
  return values;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  if (size == 0) return 0;
  static const MemoryFile text;
  text.fill({data + 1, size - 1});
  const std::size_t line_size = (data[0] & 1) != 0 ? pane_line_size : analysis_line_size;
  const std::vector<float> expected = values_of(open_file(text.name(), "rb").get(), line_size);

  const FilePtr file = open_file(text.name(), "rb");
  SampleReader reader(file.get(), line_size);
  std::vector<float> values(size + 1);
  values.resize(reader.read(values));
  if (values.size() != expected.size()) std::abort();
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (std::bit_cast<std::uint32_t>(values[i]) != std::bit_cast<std::uint32_t>(expected[i])) {
      std::abort();
    }
  }
  return 0;
}
