#include "app/signal/key_input.hpp"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdio_ext.h>
#include <termios.h>
#include <unistd.h>

#include "base/console.hpp"

namespace torve {

namespace {

constexpr int input = STDIN_FILENO;
constexpr std::array ending_signals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGABRT};

// State: the terminal as it was, and what the signals did, for the handler.
termios terminal_before;
std::array<struct sigaction, ending_signals.size()> actions_before;

void restore_actions() {
  for (std::size_t i = 0; i < ending_signals.size(); ++i)
    sigaction(ending_signals[i], &actions_before[i], nullptr);
}

// Only what a handler may call: the terminal goes back, then the signal does what it did before.
// After a stop the program goes on with the terminal as it is, and keys then need Return.
extern "C" void restore_and_raise(int signal) {
  tcsetattr(input, TCSANOW, &terminal_before);
  restore_actions();
  raise(signal);
}

void catch_signals() {
  struct sigaction action = {};
  action.sa_handler = restore_and_raise;
  sigemptyset(&action.sa_mask);
  sigaddset(&action.sa_mask, SIGTTOU);
  for (std::size_t i = 0; i < ending_signals.size(); ++i) {
    sigaction(ending_signals[i], nullptr, &actions_before[i]);
    // A signal that the program was started to ignore stays ignored.
    if (actions_before[i].sa_handler != SIG_IGN) sigaction(ending_signals[i], &action, nullptr);
  }
}

bool takes_settings() {
  return isatty(input) != 0 && !is_in_background();
}

// The window may be closed while an answer is awaited; the program then ends from there.
bool is_set = false;
void put_terminal_back() {
  if (is_set && takes_settings()) tcsetattr(input, TCSANOW, &terminal_before);
  is_set = false;
}

}  // namespace

KeyInput::KeyInput() : is_terminal_(takes_settings() && tcgetattr(input, &terminal_before) == 0) {
  if (!is_terminal_) return;
  [[maybe_unused]] static const int registered = std::atexit(put_terminal_back);
  is_set = true;
  catch_signals();
  termios keys = terminal_before;
  keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  keys.c_cc[VMIN] = 1;
  keys.c_cc[VTIME] = 0;
  tcsetattr(input, TCSANOW, &keys);
}

KeyInput::~KeyInput() {
  if (!is_terminal_) return;
  put_terminal_back();
  restore_actions();
}

void KeyInput::forget_typed() const {
  if (!is_terminal_) return;
  tcflush(input, TCIFLUSH);
  __fpurge(stdin);
  std::clearerr(stdin);
}

bool KeyInput::wants_more() const {
  const int key = read_console_char();
  return key != 'q' && key != EOF;
}

}  // namespace torve
