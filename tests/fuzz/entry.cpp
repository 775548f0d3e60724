// Hands each input to the target that this program is built for. Builds without a fuzzer run it
// once on each of the files named.

#include <fstream>
#include <iterator>

#include "memory_file.hpp"

namespace torve {
void FUZZ_TARGET(Bytes input);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  torve::FUZZ_TARGET({data, size});
  return 0;
}

#ifdef FUZZ_REPLAY
int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    std::ifstream file(argv[i], std::ios::binary);
    if (!file) return 1;
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  return argc > 1 ? 0 : 1;
}
#endif
