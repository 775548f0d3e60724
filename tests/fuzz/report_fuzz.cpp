// Any bytes are listed as an AU file; the first says how many of the next ones are the answers.

#include <algorithm>

#include "app/signal/report.hpp"
#include "memory_file.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  if (size == 0) return 0;
  silence();
  const std::span bytes(data + 1, size - 1);
  const std::size_t answers = std::min<std::size_t>(data[0], bytes.size());
  static const MemoryFile au;
  au.fill(bytes.subspan(answers));
  answer(bytes.first(answers));
  const int result = analyse(au.name());
  if (result != 0 && result != 1) std::abort();
  find_differences(au.name(), au.name());
  return 0;
}
