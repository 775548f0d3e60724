#include "base/console.hpp"

#include <csignal>
#include <cstdio>

namespace torve {

namespace {
ScreenService screen_service = nullptr;
}

void set_screen_service(ScreenService service) {
  screen_service = service;
}

void serve_screen() {
  if (screen_service != nullptr) screen_service();
}

int read_console_char() {
  serve_screen();
  std::fflush(stdout);
  return std::getchar();
}

void set_up_console() {
  std::setvbuf(stdout, nullptr, _IOLBF, 1 << 16);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGTTIN, SIG_IGN);
}

}  // namespace torve
