// What the fuzz targets share: files in memory and quiet output.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <stdio_ext.h>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace torve {

using Bytes = std::span<const std::uint8_t>;

inline std::string text_of(Bytes bytes) {
  return {bytes.begin(), bytes.end()};
}

/// What fuzzers look for.
inline void require(bool holds) {
  if (!holds) std::abort();
}

/// A regular file without a place on the disk, opened through its name.
class MemoryFile {
 public:
  explicit MemoryFile(Bytes bytes = {}) : descriptor_(memfd_create("fuzz", 0)) { fill(bytes); }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  void fill(Bytes bytes) const {
    require(ftruncate(descriptor_, 0) == 0);
    require(pwrite(descriptor_, bytes.data(), bytes.size(), 0) ==
            static_cast<ssize_t>(bytes.size()));
    lseek(descriptor_, 0, SEEK_SET);
  }
  int descriptor() const { return descriptor_; }
  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

/// Standard output goes nowhere from now on.
inline void silence() {
  static const bool silent = std::freopen("/dev/null", "w", stdout) != nullptr;
  require(silent);
}

/// Standard input gives these bytes from now on.
inline void answer(Bytes bytes) {
  static const MemoryFile answers;
  answers.fill(bytes);
  require(dup2(answers.descriptor(), STDIN_FILENO) == 0);
  __fpurge(stdin);
  std::clearerr(stdin);
}

}  // namespace torve
