// What the fuzz targets share: files in memory, and quiet output.
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

/// A regular file without a place on the disk, opened through its name.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("fuzz", 0)) {}
  ~MemoryFile() { close(descriptor_); }

  void fill(std::span<const std::uint8_t> bytes) const {
    if (ftruncate(descriptor_, 0) != 0) std::abort();
    const auto size = static_cast<ssize_t>(bytes.size());
    if (pwrite(descriptor_, bytes.data(), bytes.size(), 0) != size) std::abort();
    lseek(descriptor_, 0, SEEK_SET);
  }
  int descriptor() const { return descriptor_; }
  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

/// Lines on standard output go nowhere from now on.
inline void silence() {
  static const bool done = std::freopen("/dev/null", "w", stdout) != nullptr;
  if (!done) std::abort();
}

/// Standard input gives these bytes from now on.
inline void answer(std::span<const std::uint8_t> bytes) {
  static const MemoryFile answers;
  answers.fill(bytes);
  if (dup2(answers.descriptor(), STDIN_FILENO) < 0) std::abort();
  __fpurge(stdin);
  std::clearerr(stdin);
}

}  // namespace torve
