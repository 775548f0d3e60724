// A scripted session of the whole program in which memory runs out: the n-th request fails, or it
// and all that would need more than there was. The program says so or ends in good order, what it
// shows stays whole, nothing leaks. TORVE_FAULT_STEP=1 tries every n instead of a few.

#include <csignal>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>

#include "app/pool_failure.hpp"
#include "app/shutdown.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/workbench.hpp"
#include "base/console.hpp"
#include "base/memory_reserve.hpp"
#include "diagram/editor.hpp"
#include "dialogs/install.hpp"
#include "pool/pool.hpp"
#include "support/canvas_model.hpp"
#include "support/hands.hpp"
#include "text/fonts.hpp"
#include "wm/engine.hpp"

namespace {

bool counting = false;
long requests = 0, failing_request = 0;
bool all_behind_fail = false;  // as far as they need more than what has been given back since
long room = 0;

bool refused(std::size_t size) {
  if (!counting) return false;
  ++requests;
  const bool behind = all_behind_fail && failing_request > 0 && requests > failing_request;
  return requests == failing_request || (behind && static_cast<long>(size) > room);
}

void* take(std::size_t size) {
  void* block = refused(size) ? nullptr : std::malloc(size);
  if (block != nullptr && counting && requests > failing_request)
    room -= static_cast<long>(malloc_usable_size(block));
  return block;
}

}  // namespace

extern "C" const char* __asan_default_options() {
  return "exitcode=99";
}

void* operator new(std::size_t size) {
  for (;;) {
    if (void* block = take(size)) return block;
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept try {
  return operator new(size);
} catch (const std::bad_alloc&) {
  return nullptr;
}
void operator delete(void* block) noexcept {
  if (counting && requests > failing_request) room += static_cast<long>(malloc_usable_size(block));
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}

namespace torve {
namespace {

constexpr int exit_by_request = 1, picture_differs = 50;
Pixels bar;  // what the base shows below the plots

void check_and_close() {
  counting = false;
  const Pixels base = base_now();
  const bool same_bar = bar.empty() || std::equal(bar.begin(), bar.end(), base.end() - 60 * 800);
  if (!same_bar || !canvas_fault(base).empty()) _exit(picture_differs);
  InputEvent closing = {.type = Type::close};
  user_events.push_front(closing);
}

// Keys for whatever waits for one come from the user's rest at the end of the list.
void at_each_wait() {
  static int rests = 0;
  if (!counting) return;
  if (bar.empty()) {
    const bool counted = std::exchange(counting, false);
    const Pixels base = base_now();
    bar.assign(base.end() - 60 * 800, base.end());
    counting = counted;
  }
  if (user_events.empty() && ++rests == 3 && cur_button == 0) check_and_close();
  if (rests > 50) check_and_close();
}

class Session : Hands {
 public:
  static void script() {
    user_events.clear();
    constexpr int left[] = {400, 400, 240, 400, 256, 320};  // of the tools' menus
    for (int tool = 0; tool < 6; ++tool) {
      const int x = left[tool], y = tool == 3 ? 529 : 520;
      click(65 + 45 * tool, 575);
      for (const int line : {0, 1, 2})
        double_click(x + 30, y + 21 + 11 * line);
      drag(x + 4, y + 4, 250, 90 + 70 * tool, 3);
    }
    click(100, 530, 3, 600);
    drag(720, 4, 700, 100);
    for (int line = 1; line <= 8; ++line) {
      double_click(710, 100 + 16 + 11 * line + 5);
      drag(60 + 40 * line, 60, 80 + 40 * line, 200 + 9 * line);
    }
    double_click(710, 121);  // pointer
    drag(100, 60, 130, 90), drag(120, 130, 150, 160);
    click(140, 60, 3), type("abc\r"), click(220, 60, 3);
    double_click(710, 100 + 16 + 11 * 9 + 5);   // undo
    double_click(710, 100 + 16 + 11 * 10 + 5);  // files
    for (const int line : {0, 1, 2, 1})
      double_click(230, 21 + 11 * line), double_click(210, 21 + 11 * line);
  }

 private:
  static void double_click(int x, int y) { click(x, y, 1, 600), click(x, y, 1, 100); }
};

int run_program() noexcept try {
  set_pool_allocator(take);
  set_up_console();
  defaultfont = 7;
  install_pool_reporters(), install_dialogs(), install_diagram();
  counting = true;
  if (!hold_memory_reserve() || init_font(7) + init_font2(label_font) != 0) return 1;
  if (initPool(0, 0, 0, 0) != 0 || !create_screen_image()) return 1;
  allocate_colours(allocate_true_colour);
  reset_screen_state(), reset_input();
  set_display_backend(&user);
  set_close_handler([] { texit_ope(0, 0, 0); });
  set_start_state();
  xcolor2 = xcolor, set_xcolor2();
  at_wait = at_each_wait;
  if (allocate_work_buffer()) editor();
  counting = false;
  return release_everything() + exit_by_request;
} catch (const std::bad_alloc&) {
  counting = false;
  return release_everything() + exit_by_request;
}

void write_signals() {
  for (const char* name : {"bhld1.res", "bhld2.res", "compar3.res"}) {
    std::ofstream file(name);
    for (int i = 0; i < 400; ++i)
      file << i << ' ' << (i * 37) % 101 - 50 << '\n';
  }
}

struct Ended {
  int status;     // of the process; a signal's number below 0
  long requests;  // of memory
};

Ended session(long n, bool all_behind) {
  static long* const counted = static_cast<long*>(
      mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  const TemporaryDirectory directory;
  write_signals();
  const pid_t child = fork();
  if (child == 0) {
    alarm(60);
    failing_request = n, all_behind_fail = all_behind;
    if (std::freopen("output", "w", stdout) == nullptr) _exit(2);
    if (std::freopen("/dev/null", "r", stdin) == nullptr) _exit(2);
    std::atexit([] { *counted = requests; });
    Session::script();
    std::exit(run_program());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), *counted};
}

TEST(Memory, MayRunOutAtAnyRequest) {
  const Ended undisturbed = session(0, false);
  ASSERT_EQ(undisturbed.status, exit_by_request);
  ASSERT_GT(undisturbed.requests, 500);
  const char* asked = std::getenv("TORVE_FAULT_STEP");
  const long step = asked != nullptr ? std::atol(asked) : undisturbed.requests / 8;
  int sessions = 0;
  for (long n = 1; n <= undisturbed.requests; n += step) {
    for (const bool all_behind : {false, true}) {
      ++sessions;
      EXPECT_EQ(session(n, all_behind).status, exit_by_request) << n << (all_behind ? " on" : "");
    }
  }
  std::printf("%ld requests, %d sessions\n", undisturbed.requests, sessions);
}

}  // namespace
}  // namespace torve
