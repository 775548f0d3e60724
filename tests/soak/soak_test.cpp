// A random user of the whole workbench in a real window: every tool, every menu, the diagram, good
// and bad files. TORVE_SOAK_EVENTS and TORVE_SOAK_SEED choose how long and which one.
//
// After every fiftieth event the window must show the image, and after every thousandth the image
// what the model says: the base, which tools alone may change and the icon bar never, then the
// figures, then the windows.

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <malloc.h>
#include <numeric>
#include <random>
#include <sys/prctl.h>
#include <tuple>
#include <unistd.h>

#include "app/inspect/gestures.hpp"
#include "app/jump_table.hpp"
#include "app/main_loop.hpp"
#include "app/plot/pane_view.hpp"
#include "app/pool_failure.hpp"
#include "app/shutdown.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/tools/pane_views.hpp"
#include "app/tools/tools.hpp"
#include "app/workbench.hpp"
#include "base/console.hpp"
#include "base/memory_reserve.hpp"
#include "base/progress.hpp"
#include "diagram/editor.hpp"
#include "dialogs/install.hpp"
#include "dialogs/tool_menu.hpp"
#include "display/graph.hpp"
#include "display/x11_state.hpp"
#include "pool/pool.hpp"
#include "support/canvas_model.hpp"
#include "support/hands.hpp"
#include "text/fonts.hpp"
#include "wm/engine.hpp"

// Last, for their macros.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace {
int round_trips = 1;  // the connection itself
// Of 12: two of the X library are not seen here, and one is the wait for the window.
constexpr int most_round_trips = 9;
}  // namespace

// In the place of the X library's own, which waits for the reply to a request.
extern "C" Status _XReply(Display* connection, void* reply, int extra, Bool discard) {
  static const auto wait = reinterpret_cast<decltype(&_XReply)>(dlsym(RTLD_NEXT, "_XReply"));
  ++round_trips;
  return wait(connection, reply, extra, discard);
}

namespace torve {
namespace {

// Kilobytes, after the first thousand events, without what the pool keeps.
constexpr long most_growth = 2048, most_resident_growth = 4096;
constexpr int bar_row = 540;  // plots end above it
constexpr std::size_t base_of_bar = std::size_t{bar_row} * screen_width;

std::mt19937 dice;
long events = 0, events_wanted = 4000, next_check = 1000, next_look = 0;
long first_resident = 0, first_allocated = 0;
bool leaving = false;
Pixels base;
const DisplayBackend* x11 = nullptr;

int below(int n) {
  return static_cast<int>(dice() % static_cast<unsigned>(n));
}

bool one_in(int n) {
  return below(n) == 0;
}

const char* any(std::initializer_list<const char*> texts) {
  return texts.begin()[below(static_cast<int>(texts.size()))];
}

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "event %ld: %s\n", events, what.c_str());
  std::abort();
}

// --- the model ----------------------------------------------------------------------------------

// Looking closer at panes changes their bands and nothing else, and takes all marks with it.
void follow_views() {
  static std::array<PaneView, pane_count> seen;
  std::array<bool, pane_count> changed = {};
  for (std::size_t pane = 0; pane < seen.size(); ++pane) {
    const PaneView& view = shown_view(static_cast<int>(pane));
    changed.at(pane) = view != std::exchange(seen.at(pane), view);
  }
  if (changed == std::array<bool, pane_count>{}) return;
  end_looking();
  const Pixels before = std::exchange(base, base_now());
  for (std::size_t i = 0; i < base.size(); ++i) {
    if (base[i] == before[i]) continue;
    const int place = static_cast<int>(i);
    const int pane = pane_at(place % screen_width, place / screen_width);
    if (pane < 0 || !changed.at(static_cast<std::size_t>(pane)))
      fail("a view has painted outside its pane");
  }
}

// A tool finds the base as the last one left it, and leaves the icon bar alone.
template <WdAction action>
int watched(int index, int* line_flags, MenuItem* items, char** lines) {
  follow_views();
  if (base_now() != base) fail("the base has changed by itself");
  const int result = action(index, line_flags, items, lines);
  const Pixels before = std::exchange(base, base_now());
  if (!std::equal(base.begin() + base_of_bar, base.end(), before.begin() + base_of_bar))
    fail("a tool has painted on the icon bar");
  return result;
}

void watch_tools() {
  const std::pair<WdAction, WdAction> tools[] = {
      {write_au_menu_actions, watched<write_au_menu_actions>},
      {audio_menu_actions, watched<audio_menu_actions>},
      {printeps_menu_actions, watched<printeps_menu_actions>},
      {read_au_menu_actions, watched<read_au_menu_actions>},
      {analysis_menu_actions, watched<analysis_menu_actions>},
      {analysis2_menu_actions, watched<analysis2_menu_actions>}};
  for (const auto& [plain, with_watch] : tools) {
    for (int id = write_menu_id; id <= spectrum_menu_id; ++id) {
      if (wd_actions[id - 1] == plain) wd_actions[id - 1] = with_watch;
    }
  }
}

// Whatever the program waits for, the window shows the image.
void check_window() {
  const Pixels shown = all_pixels();
  XImage* image = XGetImage(display, win, 0, 0, screen_width, screen_height, AllPlanes, ZPixmap);
  for (int i = 0; i < screen_width * screen_height; ++i) {
    const unsigned long pixel = XGetPixel(image, i % screen_width, i / screen_width);
    if ((pixel & 0xFFFFFF) != shown[static_cast<std::size_t>(i)]) fail("the window differs");
  }
  XDestroyImage(image);
}

long resident_kilobytes() {
  long size = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * 4;
}

void check() {
  end_looking();
  const std::string fault = canvas_fault(base);
  if (!fault.empty()) fail(fault + " differ");
  // The pool keeps the largest blocks that it has lent, 35 at most.
  const long pool = std::accumulate(std::begin(b_reg), std::end(b_reg), 0L,
                                    [](long sum, const PoolSlot& slot) { return sum + slot.size; });
  const struct mallinfo2 heap = mallinfo2();  // all 0 under a sanitizer
  const long resident = resident_kilobytes() - pool / 1024;
  const long allocated = (static_cast<long>(heap.uordblks + heap.hblkhd) - pool) / 1024;
  std::fprintf(stderr, "%ld events, %ld KB resident, %ld KB allocated, %ld KB more by the pool\n",
               events, resident, allocated, pool / 1024);
  if (first_resident == 0) first_resident = resident, first_allocated = allocated;
  if (heap.uordblks == 0) return;
  if (allocated > first_allocated + most_growth) fail("memory is not returned");
  if (resident > first_resident + most_resident_growth) fail("free memory is kept");
}

// --- the user -----------------------------------------------------------------------------------

void somebody_changes_files() {
  const auto signal = [](const char* name, int samples) {
    std::ofstream file(name);
    for (int i = 0; i < samples; ++i)
      file << i << ' ' << below(2000) - 1000 << ".5\n";
  };
  signal("bhld1.res", 1500), signal("bhld2.res", 1200),
      signal("compar3.res", one_in(9) ? 10500 : 300);
  if (one_in(2))
    std::ofstream(any({"bhld1.res", "mid.res", "figure.vob"})) << "torve\1\xFF no such\n";
  if (one_in(2)) std::remove(any({"bhld2.res", "figure.vob", "compar3.res", "checknew.res"}));
  std::ofstream("messages.txt") << (one_in(2) ? "short" : std::string(3000, 'w'));
  if (one_in(2)) std::remove("messages.txt");
}

class User : public Hands {
 public:
  static void act() {
    const int figures = count_figures();
    if (figures > 25 || (figures > 0 && one_in(8))) return cut_a_figure();
    switch (below(14)) {
      case 12:
        return look_closer(below(800), below(540));
      case 13:
        return add({.type = Type::hover, .x = below(800), .y = below(540)});
      case 0:
        return click(23 + 45 * (1 + below(6)), 575);
      case 1:
        return click(below(680), below(600), 2 + below(2));
      case 2:
        return drag(below(690), below(560), below(690), below(600), 1 + below(3));
      case 3:
        return grab_something(one_in(2) ? 3 : 1);
      case 4:
        return one_in(5) ? somebody_changes_files() : press_a_key();
      case 5:
        return is_eligible(wd(2)) ? run_line(wd(2), below(12)) : click(below(680), 560, 3);
      default:
        return use_a_window();
    }
  }

 private:
  static int count_figures() {
    int n = 0;
    for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next)
      ++n;
    return n;
  }
  static void look_closer(int x, int y) {
    constexpr unsigned long keys[] = {XK_Home, XK_BackSpace, XK_Return, XK_Up, XK_Down, XK_Escape};
    constexpr Modifiers held[] = {Modifiers::none, Modifiers::none, Modifiers::shift,
                                  Modifiers::control};
    add({.type = Type::hover, .x = x, .y = y});
    switch (below(4)) {
      case 0:
        return drag(x, y, below(800), below(540));
      case 1:
        return add({.type = Type::key, .keysym = keys[below(6)]});
      case 2:
        return type(any({"+", "-", "<", ">", "+++", "d", "m", "w", "l", "c", "?"}));
      default:
        const int button = 4 + below(4);
        const Modifiers with = held[below(4)];
        add({.type = Type::press, .button = button, .x = x, .y = y, .modifiers = with});
        add({.type = Type::release, .button = button, .x = x, .y = y, .modifiers = with});
    }
  }
  static void press_a_key() {
    constexpr unsigned long keys[] = {XK_Escape, XK_Delete, XK_Left, XK_F1, XK_Shift_L, XK_Home};
    add({.type = Type::key, .keysym = keys[below(6)]});
    type(any({"y", "n", "\r", "\b\b", "\x01", "%s%n"}));
  }
  static void grab_something(int button) {
    const Vobj* figure = firstvobj;
    for (int i = below(20); i > 0 && figure != nullptr && figure->next != nullptr; --i)
      figure = figure->next;
    if (figure == nullptr) return;
    const int x[] = {figure->x1, figure->x2, (figure->x1 + figure->x2) / 2}, part = below(3);
    const int y[] = {figure->y1, figure->y2, (figure->y1 + figure->y2) / 2};
    if (button == 3) return click(x[part], y[part], 3);
    drag(x[part], y[part], below(680), below(599));
  }
  static void cut_a_figure() {
    if (!is_eligible(wd(2))) return click(below(680), 5 + below(590), 3);
    run_line(wd(2), 0);
    grab_something(1);
    add({.type = Type::key, .keysym = XK_Delete});
  }
  static int row(const WdObject& menu, int line) { return menu.y + 16 + 11 * line + 5; }
  static void run_line(const WdObject& menu, int line) {
    click(menu.x + 30, row(menu, line)), click(menu.x + 30, row(menu, line));
  }
  static void edit_a_field(const WdObject& menu) {
    const MenuItem& item = menu.menu_items[below(menu.item_count)];
    click(menu.x + 16 + item.x + below(10), row(menu, item.y / 11), 1 + below(2) * 2);
    std::string keys(static_cast<std::size_t>(below(3) * 6), '\b');
    keys += any({"7", "-", "1e999", "inf", "nan", "%s%n%s", "all", "0", "3", "-99999999999", "x.au",
                 "bhld1.res", "compar3.res", "spectr3.spe", "no.vob", "><\x02\x1b[",
                 "wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww", "uniform", "POISSON 2"});
    type(keys + (one_in(8) ? "" : "\r"));
  }
  static void use_a_window() {
    std::vector<int> ids;
    for (int id = 1; id <= wd_object_count; ++id) {
      if (is_eligible(wd(id))) ids.push_back(id);
    }
    if (ids.empty()) return;
    const WdObject& window = wd(ids[static_cast<std::size_t>(below(static_cast<int>(ids.size())))]);
    const int right = window.x + window.width, lower = window.y + window.height;
    switch (below(12)) {
      case 0:  // runs or moves
        return drag(window.x + 4, window.y + 4, below(800), below(600), 1 + below(3));
      case 1:
        return click(right - 4, window.y + 4, one_in(2) ? 3 : 1);  // closes
      case 2:
        return drag(right - 1, window.y + 20 + below(30), below(800), below(600));
      case 3:
        return drag(window.x + 40 + below(99), lower - 1, below(800), below(600));
      case 4:
        return drag(window.x + 12 + below(60), window.y + 4, below(800), below(600));
      case 5:
        return drag(window.x + 4, window.y + 12 + below(30), below(800), below(600));
      case 6:
      case 7:
      case 8:
        if (window.item_count > 0) return edit_a_field(window);
        [[fallthrough]];
      default:
        return run_line(window, below(std::max(1, window.visible_lines)));
    }
  }
};

// --- the display --------------------------------------------------------------------------------

void inject_key(const InputEvent& event) {
  const char character = event.characters[0];
  KeySym symbol = event.character_count == 0 ? event.keysym : static_cast<KeySym>(character);
  std::vector<KeySym> keys;
  if (character == '\r') symbol = XK_Return;
  if (character == '\b') symbol = XK_BackSpace;
  if (symbol < ' ') symbol += 'a' - 1, keys = {XK_Control_L};
  const KeyCode code = XKeysymToKeycode(display, symbol);
  if (XkbKeycodeToKeysym(display, code, 0, 0) != symbol) keys = {XK_Shift_L};
  keys.push_back(symbol);
  for (const KeySym key : keys)
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, key), True, CurrentTime);
  for (const KeySym key : keys)
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, key), False, CurrentTime);
}

void hold_modifiers(Modifiers modifiers, Bool down) {
  for (const auto& [modifier, key] :
       {std::pair(Modifiers::shift, KeySym{XK_Shift_L}), {Modifiers::control, XK_Control_L}}) {
    if ((modifiers & modifier) == modifier)
      XTestFakeKeyEvent(display, XKeysymToKeycode(display, key), down, CurrentTime);
  }
}

void inject(const InputEvent& event) {
  hold_modifiers(event.modifiers, True);
  if (event.type == Type::key) {
    inject_key(event);
  } else {
    int x = 0, y = 0;
    Window child = 0;
    XTranslateCoordinates(display, win, DefaultRootWindow(display), event.x, event.y, &x, &y,
                          &child);
    XTestFakeMotionEvent(display, -1, x, y, CurrentTime);
    if (event.type == Type::press || event.type == Type::release)
      XTestFakeButtonEvent(display, static_cast<unsigned>(event.button), event.type == Type::press,
                           CurrentTime);
  }
  hold_modifiers(event.modifiers, False);
  XSync(display, False);
}

int leave(int, int, int) {
  return leaving ? 1 : 0;
}

// Somebody loses patience with a computation now and then.
void cancel_some_work() {
  static constexpr Watcher impatient = {.begin = [](const std::string&) {},
                                        .goes_on = [](double) { return !one_in(3); },
                                        .end = [] {}};
  set_watcher(&impatient);
}

void wait_for_user(InputEvent& event) {
  if (base.empty()) base = base_now(), present();
  c_table[0].handler = leave;
  watch_tools();
  cancel_some_work();
  if (events >= next_look && !x11->event_pending()) check_window(), next_look += 50;
  if (popwindow == 0 && cur_button == 0) follow_views();
  while (!x11->event_pending()) {
    const bool at_rest = user_events.empty() && popwindow == 0 && cur_button == 0;
    if (at_rest && events >= next_check) check(), next_check += 1000;
    if (at_rest && events >= events_wanted && !leaving) {
      leaving = true;
      exit_ope(), free_wd_objects_gt1_u(), hide_errormsg();
    }
    if (leaving) Hands::type(" "), Hands::click(20, 575);
    if (user_events.empty()) User::act();
    if (user_events.empty()) continue;
    inject(user_events.front());
    user_events.pop_front();
  }
  x11->wait_event(event);
  ++events;
}

// Whether the window's colours are what the server answers when asked for them.
bool colours_are_those_of_the_server() {
  for (int i = 0; i < colour_count; ++i) {
    const ColourShade shade = colour_shades[static_cast<std::size_t>(i)];
    XColor colour = {};
    colour.red = static_cast<unsigned short>(shade.red << 8);
    colour.green = static_cast<unsigned short>(shade.green << 8);
    colour.blue = static_cast<unsigned short>(shade.blue << 8);
    XAllocColor(display, colormap, &colour);
    const ColourRecord& ours = xcolor[i];
    if (std::tie(ours.pixel, ours.red, ours.green, ours.blue) !=
        std::tie(colour.pixel, colour.red, colour.green, colour.blue))
      return false;
  }
  return true;
}

bool start() {
  set_up_console();
  return_large_blocks();
  defaultfont = 7;
  install_pool_reporters(), install_dialogs(), install_diagram();
  if (init_font(7) + init_font2(label_font) != 0 || initPool(0, 0, 0, 0) != 0) return false;
  initgraph(0, nullptr);
  std::fprintf(stderr, "%d round trips\n", round_trips);
  if (round_trips > most_round_trips || !colours_are_those_of_the_server()) return false;
  x11 = display_backend();
  set_screen_service(serve_expose_events);
  set_start_state();
  xcolor2 = xcolor;
  set_xcolor2();
  return allocate_work_buffer();
}

// An X server of our own, which ends with us. Whether it runs.
bool start_server() {
  int ends[2];
  if (pipe(ends) != 0) return false;
  if (fork() == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    execlp("Xvfb", "Xvfb", "-displayfd", std::to_string(ends[1]).c_str(), "-screen", "0",
           "1024x768x24", "-noreset", "-nolisten", "tcp", nullptr);
    _exit(127);
  }
  close(ends[1]);
  std::string number = ":";
  for (char digit = 0; read(ends[0], &digit, 1) == 1 && digit != '\n';)
    number += digit;
  setenv("DISPLAY", number.c_str(), 1);
  return number.size() > 1;
}

int soak() {
  if (!start()) return 1;
  DisplayBackend user_backend = *x11;
  user_backend.wait_event = wait_for_user;
  set_display_backend(&user_backend);
  editor();
  set_display_backend(x11);
  const int failed = release_everything();
  std::fprintf(stderr, "%ld events, %d blocks not returned\n", events, b_counter);
  return failed != 0 || events < events_wanted ? 1 : 0;
}

}  // namespace
}  // namespace torve

int main() {
  using namespace torve;
  if (const char* wanted = std::getenv("TORVE_SOAK_EVENTS")) events_wanted = std::atol(wanted);
  const char* seed = std::getenv("TORVE_SOAK_SEED");
  dice.seed(seed != nullptr ? static_cast<unsigned>(std::atol(seed)) : 1);
  if (!start_server()) return 1;
  const TemporaryDirectory directory;
  if (std::freopen("/dev/null", "r", stdin) == nullptr ||
      std::freopen("output", "w", stdout) == nullptr)
    return 1;
  somebody_changes_files();
  return soak();
}
