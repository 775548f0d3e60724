#include "app/tools/work_watch.hpp"

#include <chrono>
#include <cstdio>
#include <new>
#include <optional>
#include <string>

#include "base/progress.hpp"
#include "dialogs/strip.hpp"
#include "display/input.hpp"

namespace torve {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr unsigned long escape_key = 0xFF1B;  // its X name
constexpr auto between_looks = 50ms;
constexpr auto worth_saying = 500ms;

struct Watch {
  const std::string* output = nullptr;
  Clock::time_point begin;
  Clock::time_point next_look;
  int percent = 0;
  std::optional<StripNote> note;
};
Watch watch;

// The name is kept as it is, which needs no memory: it outlives the computation.
void begin(const std::string& output) {
  watch.output = &output;
  watch.begin = Clock::now();
  watch.next_look = watch.begin + between_looks;
  watch.percent = -1;
}

// Without memory the strip says nothing.
void say_percent(int percent) try {
  if (percent <= watch.percent) return;
  watch.percent = percent;
  const std::string text =
      *watch.output + ": " + std::to_string(percent) + " % done, Escape cancels";
  if (watch.note) {
    say_in_strip(text);
  } else {
    watch.note.emplace(text);
  }
} catch (const std::bad_alloc&) {
}

bool goes_on(double done) {
  const auto now = Clock::now();
  if (now < watch.next_look) return true;
  if (take_waiting_key(escape_key)) {
    std::printf("cancelled\n");
    return false;
  }
  if (now - watch.begin >= worth_saying) say_percent(static_cast<int>(100 * done));
  serve_expose_events();
  watch.next_look = Clock::now() + between_looks;
  return true;
}

void end() {
  watch.note.reset();
}

constexpr Watcher watcher = {.begin = begin, .goes_on = goes_on, .end = end};

}  // namespace

void watch_computations() {
  set_watcher(&watcher);
}

}  // namespace torve
