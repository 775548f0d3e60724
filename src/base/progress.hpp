// How far a long computation is, and whether it is to go on.
//
// There is one thread, so a computation has to ask. It tells from within how much is done, at least
// every 50 ms; who has a screen and a keyboard registers a watcher that shows it and may end the
// computation. Without a watcher, and outside of watched(), telling does nothing.
#pragma once

#include <string>

#include "base/kept.hpp"
#include "base/outcome.hpp"

namespace torve {

/// Called while a computation runs; none of them may throw. They are called far more often than
/// there is anything to look for, so they look at the clock themselves.
struct Watcher {
  /// A computation begins that makes, or reads, the file `output`; the name stays until the end.
  void (*begin)(const std::string& output) = nullptr;
  /// `done` of it, 0 to 1, is done. Whether it is to go on.
  bool (*goes_on)(double done) = nullptr;
  void (*end)() = nullptr;
};

/// Registers a watcher, which must stay alive; null for none.
void set_watcher(const Watcher* watcher);

/// Thrown in the midst of a computation that is to end, and caught by watched().
struct Cancelled {};

/// So much of the present part of the work is done, 0 to 1.
void tell_done(double fraction);

/// The same as was told last: in the midst of a longer step.
void tell_alive();

/// While one lives, what is told is about a part of the work around it, which goes from one
/// fraction to another.
class PartOfWork {
 public:
  PartOfWork(double from, double to);

 private:
  Kept<double, double> around_;
};

/// While one lives nothing is told: what must not be left half done.
class Unwatched {
 public:
  Unwatched();

 private:
  Kept<const Watcher*> before_;
};

/// The time from the beginning of a computation to its end, as the watcher sees it.
class WatchedWork {
 public:
  explicit WatchedWork(const std::string& output);
  ~WatchedWork();
  WatchedWork(const WatchedWork&) = delete;
  WatchedWork& operator=(const WatchedWork&) = delete;
};

/// What `compute` returns, or that it was cancelled. What has been begun goes as the stack is
/// unwound: `output` is then as it was. Not within another one.
template <typename Compute>
Outcome watched(const std::string& output, Compute compute) try {
  const WatchedWork work(output);
  return compute();
} catch (const Cancelled&) {
  return {.cause = Cause::cancelled, .name = output};
}

}  // namespace torve
