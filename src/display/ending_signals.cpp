#include "display/ending_signals.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <iterator>
#include <poll.h>
#include <unistd.h>

#include "base/unfinished_files.hpp"

namespace torve {

namespace {

int signal_pipe[2] = {-1, -1};  // a byte for each signal that has come

// The second one of a kind.
extern "C" void end_at_once(int signal) {
  remove_unfinished_files();
  raise(signal);
}

void set_handler(int signal, void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(signal, &action, nullptr);
}

// Only what a handler may call.
extern "C" void note_signal(int signal) {
  const int error = errno;
  const char byte = 0;
  set_handler(signal, end_at_once);
  if (write(signal_pipe[1], &byte, 1) != 1) _exit(1);
  errno = error;
}

void take_byte() {
  char byte = 0;
  while (read(signal_pipe[0], &byte, 1) < 0 && errno == EINTR) {
  }
}

}  // namespace

void watch_ending_signals() {
  if (signal_pipe[0] < 0 && pipe2(signal_pipe, O_CLOEXEC) != 0) return;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) set_handler(signal, note_signal);
  }
}

Waited wait_unless_asked_to_end(int descriptor, int other) {
  for (;;) {
    pollfd waited[] = {{descriptor, POLLIN, 0}, {signal_pipe[0], POLLIN, 0}, {other, POLLIN, 0}};
    if (poll(waited, std::size(waited), -1) < 0 && errno == EINTR) continue;
    if (waited[1].revents != 0) {
      take_byte();
      return Waited::asked_to_end;
    }
    return waited[0].revents == 0 && waited[2].revents != 0 ? Waited::other : Waited::readable;
  }
}

}  // namespace torve
