#include "base/console.hpp"

#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#include "base/unfinished_files.hpp"

namespace torve {

namespace {

ScreenService screen_service = nullptr;
void (*input_waiter)(int) = nullptr;
std::array<bool, STDERR_FILENO + 1> was_closed = {};

// A stream that the program was started without must not be one of its files: the next one opened,
// perhaps the connection to the window, would take its place and get what is printed.
void open_closed_streams() {
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    was_closed.at(static_cast<std::size_t>(stream)) = true;
    static_cast<void>(open("/dev/null", O_RDWR));
  }
}

}  // namespace

void set_screen_service(ScreenService service) {
  screen_service = service;
}

void serve_screen() {
  if (screen_service != nullptr) screen_service();
}

void set_input_waiter(void (*wait_until_readable)(int descriptor)) {
  input_waiter = wait_until_readable;
  if (input_waiter != nullptr) std::setvbuf(stdin, nullptr, _IONBF, 0);
}

int read_console_char() {
  serve_screen();
  std::fflush(stdout);
  if (input_waiter != nullptr && !is_in_background()) input_waiter(STDIN_FILENO);
  return std::getchar();
}

bool is_in_background() {
  return isatty(STDIN_FILENO) != 0 && tcgetpgrp(STDIN_FILENO) != getpgrp();
}

void set_up_console() {
  open_closed_streams();
  std::setvbuf(stdout, nullptr, _IOLBF, 1 << 16);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGTTIN, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  clean_up_when_ended();
}

bool started_without(int stream) {
  return was_closed.at(static_cast<std::size_t>(stream));
}

}  // namespace torve
