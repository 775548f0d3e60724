// Child processes that a test starts, waits for with a deadline, and never leaves behind.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace torve::desktop {

/// How long anything may take before a test gives up; generous, because nobody waits for it unless
/// something is broken.
constexpr std::chrono::milliseconds patience{20000};

/// A file descriptor that closes itself.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor() { close(); }
  [[nodiscard]] int get() const { return number_; }
  int release();
  void close();

 private:
  int number_ = -1;
};

struct Command {
  std::vector<std::string> words;             // the first is the program, looked up in PATH
  std::vector<std::string> environment = {};  // "NAME=value", added to ours
  std::filesystem::path directory = ".";
  std::filesystem::path input = "/dev/null";   // the file that it reads
  std::filesystem::path output = "/dev/null";  // files that receive what it writes
  std::filesystem::path errors = "/dev/null";
  int inherited = -1;  // a descriptor that becomes its number 3
};

/// Runs a command until it ends; kills it when the object goes away, and the kernel does when the
/// test itself dies.
class Process {
 public:
  explicit Process(const Command& command);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  /// The exit status, 128 + signal when a signal ended it; nothing when it still runs after
  /// `limit`.
  [[nodiscard]] std::optional<int> wait(std::chrono::milliseconds limit = patience);
  void kill(int signal) const;
  /// Becomes readable when the process ends.
  [[nodiscard]] int end_descriptor() const { return end_.get(); }

 private:
  pid_t id_ = -1;
  Descriptor end_;
  std::optional<int> status_;
};

/// Waits until one of the descriptors can be read; false when none can within the limit.
[[nodiscard]] bool wait_readable(const std::vector<int>& descriptors,
                                 std::chrono::milliseconds limit);

}  // namespace torve::desktop
