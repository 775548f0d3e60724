#include "display/ending_signals.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <poll.h>
#include <unistd.h>

namespace torve {

namespace {

int signal_pipe[2] = {-1, -1};  // a byte for each signal that has come

// Only what a handler may call.
extern "C" void note_signal(int) {
  const int error = errno;
  const char byte = 0;
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
    if (before.sa_handler == SIG_IGN) continue;
    struct sigaction action = {};
    action.sa_handler = note_signal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
  }
}

bool wait_unless_asked_to_end(int descriptor) {
  for (;;) {
    pollfd waited[] = {{descriptor, POLLIN, 0}, {signal_pipe[0], POLLIN, 0}};
    if (poll(waited, 2, -1) < 0 && errno == EINTR) continue;
    if (waited[1].revents == 0) return true;
    take_byte();
    return false;
  }
}

}  // namespace torve
