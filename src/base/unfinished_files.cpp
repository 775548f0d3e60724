#include "base/unfinished_files.hpp"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace torve {

namespace {

constexpr std::array ending_signals = {SIGINT, SIGTERM, SIGHUP};

// State: the names, for the handler. They belong to the objects.
std::array<std::atomic<const char*>, 8> unfinished = {};
static_assert(std::atomic<const char*>::is_always_lock_free);

// Replaces the first entry that holds `from`.
void exchange(const char* from, const char* to) {
  const auto entry = std::find(unfinished.begin(), unfinished.end(), from);
  if (entry != unfinished.end()) *entry = to;
}

// The signal comes again, with its first effect, when the handler returns.
extern "C" void remove_and_raise(int signal) {
  remove_unfinished_files();
  raise(signal);
}

}  // namespace

EndingSignalsHeld::EndingSignalsHeld() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : ending_signals)
    sigaddset(&held, signal);
  sigprocmask(SIG_BLOCK, &held, &before_);
}

EndingSignalsHeld::~EndingSignalsHeld() {
  sigprocmask(SIG_SETMASK, &before_, nullptr);
}

void UnfinishedFile::own(const std::string& name) {
  keep();
  name_ = name;
  exchange(nullptr, name_.c_str());
}

void UnfinishedFile::keep() {
  if (name_.empty()) return;
  exchange(name_.c_str(), nullptr);
  name_.clear();
}

void UnfinishedFile::remove() {
  if (name_.empty()) return;
  std::remove(name_.c_str());
  keep();
}

void remove_unfinished_files() {
  const int error = errno;
  for (const std::atomic<const char*>& entry : unfinished) {
    const char* const name = entry;
    if (name != nullptr) unlink(name);
  }
  errno = error;
}

void clean_up_when_ended() {
  [[maybe_unused]] static const int registered = std::atexit(remove_unfinished_files);
  for (const int signal : ending_signals) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler != SIG_DFL) continue;
    action.sa_handler = remove_and_raise;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
  }
}

}  // namespace torve
