// Any bytes are taken as an AU file; the first two choose the times. No sample outside the range of
// a 32-bit float or a 16-bit integer may come out, and no more lines than there are samples.

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "app/signal/au_file.hpp"
#include "app/signal/sample_file.hpp"
#include "memory_file.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  constexpr std::array<double, 8> times = {
      0, 0.0001, 1.9, 100, -1, 1e30, -1e300, std::numeric_limits<double>::quiet_NaN()};
  if (size < 2) return 0;
  silence();
  static const MemoryFile au;
  static const MemoryFile res;
  au.fill({data + 2, size - 2});
  res.fill({});
  answer({data, 1});
  if (cut_part(au.name(), res.name(), times[data[0] % 8], times[data[1] % 8]) != 0) return 0;
  const FilePtr file = open_file(res.name(), "rb");
  std::vector<float> values(size);
  values.resize(SampleReader(file.get(), analysis_line_size).read(values));
  if (values.size() > size / 4) std::abort();
  for (const float value : values) {
    if (!std::isfinite(value)) std::abort();
  }
  return 0;
}
