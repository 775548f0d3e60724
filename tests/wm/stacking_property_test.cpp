// Random users: presses, drags, keys, exposes, lost releases, opens, closes, hides, errors in the
// middle of a serve. After every step the screen, the over sets and the pool must be what an
// explicit list of pictures says.

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <random>
#include <tuple>

#include "base/errors.hpp"
#include "pool/pool.hpp"
#include "support/screen.hpp"
#include "wm/background.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/engine.hpp"
#include "wm/stacking.hpp"
#include "wm/window_model.hpp"
#include "wm/window_shape.hpp"

namespace torve {
namespace {

using Type = InputEvent::Type;

// The second one keeps the pixels under its objects itself; some of them are repainted, not put
// back, after something has been painted beneath them.
constexpr std::uint32_t test_kind = 5, keeping_kind = 6, closing_kind = 7;
constexpr int objects = 9;  // ids 1 .. 9; id 1 is the message window

// A press drops the presses that wait, so gestures arrive one by one.
std::deque<InputEvent> queue;
std::deque<std::deque<InputEvent>> later;

bool more_events() {
  if (queue.empty() && !later.empty()) {
    queue = std::move(later.front());
    later.pop_front();
  }
  return !queue.empty();
}

WindowModel model;
std::mt19937 random_numbers;

int any(int low, int high) {
  return std::uniform_int_distribution<int>(low, high)(random_numbers);
}

const DisplayBackend player = {
    .wait_event =
        [](InputEvent& event) {
          event = queue.empty() ? InputEvent{.type = Type::other} : queue.front();
          if (!queue.empty()) queue.pop_front();
        },
    .event_pending = [] { return !queue.empty(); },
    .drop_events =
        [](Type type) {
          return std::erase_if(queue, [type](const InputEvent& e) { return e.type == type; }) > 0;
        },
    .push = [](const Rect&) {},
};

void paint(int id) {
  const Rect rect = rect_of(wd(id));
  for (int y = rect.y1; y < rect.y2; ++y) {
    for (int x = rect.x1; x < rect.x2; ++x) {
      drawpixel2c(x, y, picture_pixel(id, model.version[id], x - rect.x1, y - rect.y1));
    }
  }
}

bool put(int id) {
  if (make_background(wd(id), false) != 0) return false;
  paint(id);
  return true;
}

bool refresh(int id) {
  paint(id);
  return true;
}

std::vector<std::uint8_t>& kept_pixels(int id) {
  static std::vector<std::uint8_t> pixels[objects + 1];
  return pixels[id];
}

// An error in the middle of a serve waits until the object is down.
bool error_waits = false;

void show_message() {
  if (lifted_object() != 0) {
    error_waits = true;
    return;
  }
  error_waits = false;
  put_wd_objects(message_window_id, message_window_id);
  model.put_on_top(message_window_id);
}

void resize(int id) {
  const Edge steps[] = {Edge::wider, Edge::narrower, Edge::taller, Edge::shorter,
                        Edge::wider | Edge::taller};
  for (int i = any(1, 5); i > 0; --i) {
    if (update_backgrnd(id, steps[any(0, 4)]) != Edge::none) paint(id);
  }
}

void paint_beneath() {
  const int x = any(0, 700);
  const int y = any(0, 500);
  const Rect rect = {x, y, x + any(1, 300), y + any(1, 200)};
  const std::uint32_t pixel = static_cast<std::uint32_t>(any(0, 0xFFFFFF));
  const CanvasPaint scope(rect);
  clear_win1(rect.x1, rect.y1, rect.x2, rect.y2, pixel);
  const Rect shown = intersection(rect, whole_screen);
  for (int row = shown.y1; row < shown.y2; ++row) {
    const auto first = model.base.begin() + row * screen_width;
    std::fill(first + shown.x1, first + shown.x2, pixel);
  }
}

// Serves as menus do: waits for events of its own and acts on the press that ends it.
Served serve_until_outside(int id, PointerEvent event) {
  while (more_events()) {
    event = next_pointer_event();
    const bool beside = !rect_of(wd(id)).contains(event.x, event.y);
    if (event.action == PointerAction::press && beside) return {Command::put_down, event};
  }
  return {.last = event};
}

int last_served = 0;

Served serve(int id, const PointerEvent& press) {
  last_served = id;
  EXPECT_TRUE(id == message_window_id || !wd(message_window_id).painted) << "the message stayed";
  model.put_on_top(id);
  model.take_off(id == message_window_id ? 0 : message_window_id);
  if (any(0, 9) == 0) show_message();
  if (any(0, 5) == 0) {
    ++model.version[id];
    paint(id);
  }
  if (any(0, 5) == 0) paint_beneath();
  const int command = any(id == message_window_id ? 1 : 0, 11);
  switch (command) {
    case 0:
      model.take_off(id);
      return {Command::free, press};
    case 1:
      model.take_off(id);
      return {Command::hide, press};
    case 2:
    case 3:
      return ask_to_move(wd(id), press);
    case 4:
      resize(id);
      break;
    case 5:
    case 6:
      return serve_until_outside(id, press);
    case 7:
      return {Command::put_down, press};  // its own close box
    case 8:
      return {Command::run_action, press};
    default:
      break;
  }
  return {.last = press};
}

class StackingTest : public ScreenTest {
 protected:
  StackingTest() {
    printed_by([] { EXPECT_EQ(initPool(1, 13200, 0, 0), 0); });
    EXPECT_TRUE(allocate_staging());
    init_win(0, 15);
    register_wd_kind(test_kind, {.put = put, .serve = serve, .refresh = refresh});
    register_wd_kind(keeping_kind, {.put = put,
                                    .serve = serve,
                                    .refresh = refresh,
                                    .covered = kept_pixels,
                                    .shows_figures = [](int id) { return id % 4 == 0; }});
    set_display_backend(&player);
    set_engine_hooks({.object_put_down = [] {
      if (error_waits) show_message();
    }});
    queue.clear();
    later.clear();
    error_waits = false;
  }
  ~StackingTest() override {
    free_wd_objects();
    set_display_backend(nullptr);
    set_engine_hooks({});
    release_staging();
    release_pool();
  }

  void start(unsigned seed) {
    random_numbers.seed(seed);
    for (int i = 0; i < 60; ++i) {
      const int x = any(-50, 790);
      const int y = any(-50, 590);
      clear_win1(x, y, x + any(1, 300), y + any(1, 200),
                 static_cast<std::uint32_t>(any(0, 0xFFFFFF)));
    }
    model = {.base = all_pixels(), .stack = {}, .version = {}};
    EXPECT_EQ(init_engine(1), 0);
    // The message window is there from the start, hidden, and is never freed.
    start_wd_object(message_window_id, test_kind, {160, 200, 320, 246}, WdFlags::none);
    wd(message_window_id).flags = WdFlags::off_screen;
    model.version[message_window_id] = 1;
  }

  static void open(int id) {
    const int x = any(-30, 760);
    const int y = any(-30, 560);
    WdFlags flags = WdFlags::none;
    if (any(0, 1) == 0) flags = flags | WdFlags::snap;
    if (any(0, 1) == 0) flags = flags | WdFlags::outline_move;
    if (id == 7) flags = flags | WdFlags::permanent;
    const std::uint32_t kind = id % 2 == 0 ? keeping_kind : test_kind;
    if (id == 3 || id == 5) flags = flags | WdFlags::background_on_file;
    start_wd_object(id, kind, {x, y, x + any(20, 260), y + any(20, 190)}, flags);
    std::snprintf(wd(id).name, sizeof wd(id).name, "covered_by_%d.x", id);
    ++model.version[id];
    EXPECT_EQ(put_wd_objects(id, id), 0);
    model.put_on_top(id);
  }

  static InputEvent mouse(Type type, int button) {
    InputEvent event = {.type = type, .button = button, .x = any(-5, 805), .y = any(-5, 605)};
    // Most of what a user presses is a window.
    if (type == Type::press && any(0, 4) != 0 && !model.stack.empty()) {
      const int id =
          model.stack[static_cast<std::size_t>(any(0, static_cast<int>(model.stack.size()) - 1))];
      event.x = wd(id).x + any(0, wd(id).width - 1);
      event.y = wd(id).y + any(0, wd(id).height - 1);
    }
    return event;
  }

  // Releases get lost now and then, and other events fall in between.
  static void press_and_drag() {
    for (int gesture = any(1, 3); gesture > 0; --gesture) {
      const int button = any(1, 3);
      std::deque<InputEvent> events = {mouse(Type::press, button)};
      for (int i = any(0, 3); i > 0; --i)
        events.push_back(mouse(Type::motion, 0));
      const Type between[] = {Type::key, Type::expose, Type::resize, Type::other};
      if (any(0, 3) == 0) events.push_back({.type = between[any(0, 3)]});
      if (any(0, 9) != 0) events.push_back(mouse(Type::release, button));
      if (any(0, 5) == 0) later.push_back({mouse(Type::press, any(1, 5))});
      later.push_back(events);
    }
  }

  static void operate() {
    while (more_events()) {
      const Type next = queue.front().type;
      const std::tuple before = {moving, as_rectangle, popwindow, lifted_object()};
      const auto [result, object, press] = engine_round();
      forget_hidden_message();
      if (next != Type::press && next != Type::motion && next != Type::release) {
        const std::tuple after = {moving, as_rectangle, popwindow, lifted_object()};
        EXPECT_EQ(before, after) << "an event that is not the mouse's";
        EXPECT_EQ(result == EngineRound::Result::key, next == Type::key);
      } else if (result == EngineRound::Result::canvas_press &&
                 press.action == PointerAction::press) {
        EXPECT_EQ(model.at(press.x, press.y), 0) << "a press fell through";
      } else if (result == EngineRound::Result::run_action) {
        EXPECT_EQ(object, last_served) << "another one's action";
      }
    }
  }

  // The engine hides the message when another object is pressed; everything else is decided here.
  static void forget_hidden_message() {
    const WdObject& message = wd(message_window_id);
    if (moving == message_window_id) return;
    if (!message.painted) model.take_off(message_window_id);
  }

  static void step() {
    // While an object is up only the mouse has a say, or it goes itself.
    const int id = moving > message_window_id && any(0, 1) == 0 ? moving : any(1, objects);
    switch (lifted_object() != 0 ? id == moving ? 1 : 9 : any(0, 9)) {
      case 0:
        if (id != message_window_id) open(id);
        break;
      case 1:
        if (id == message_window_id) break;
        free_one_wd_object(id);
        model.take_off(id);
        EXPECT_TRUE(moving != id && lifted_object() != id) << "it is still held";
        EXPECT_TRUE(moving != 0 || X2mouse == X__max) << "the pointer is shut in";
        break;
      case 2:
        hide_wd_object(id);
        model.take_off(id);
        break;
      case 3:
        if (wd(id).kind == kind_free) break;
        EXPECT_EQ(put_wd_objects(id, id), 0);
        model.put_on_top(id);
        break;
      case 4:
        if (bring_id_to_top(id, any(0, 1) == 0 ? 1 : 2) != 0) model.put_on_top(id);
        break;
      case 5:
        paint_beneath();
        break;
      case 6:
        show_message();
        break;
      default:
        press_and_drag();
        operate();
        break;
    }
  }

  // What is wrong with the screen and the books; empty when they are right.
  static std::string fault() {
    if (as_rectangle != 0) return {};  // an outline is up: the object will come back
    const std::vector<std::uint32_t> shown = all_pixels();
    const std::vector<std::uint32_t> expected = model.picture();
    const auto wrong = std::mismatch(shown.begin(), shown.end(), expected.begin()).first;
    if (wrong != shown.end()) {
      const int at = static_cast<int>(wrong - shown.begin());
      return "pixel " + std::to_string(at % 800) + "," + std::to_string(at / 800);
    }
    for (int id = 1; id <= wd_object_count; ++id) {
      const WdObject& object = wd(id);
      if (is_eligible(object) && object.over != model.over(id))
        return "set of " + std::to_string(id);
      if (object.kind != kind_free &&
          intersection(rect_of(object), whole_screen) != rect_of(object)) {
        return "place of " + std::to_string(id);
      }
    }
    return {};
  }

  static int backgrounds() {
    return static_cast<int>(
        std::count_if(std::begin(wd_object), std::end(wd_object),
                      [](const WdObject& o) { return o.background != nullptr; }));
  }

  TemporaryDirectory directory_;  // for backgrounds on file
};

TEST_F(StackingTest, RandomUsersLeaveTheScreenRight) {
  const unsigned seeds = asked("TORVE_SEEDS", 8), steps = asked("TORVE_STEPS", 100);
  for (unsigned seed = 1; seed <= seeds; ++seed) {
    start(seed);
    for (unsigned i = 0; i < steps; ++i) {
      step();
      ASSERT_EQ(fault(), "") << "seed " << seed << " step " << i;
      ASSERT_FALSE(HasFailure()) << "seed " << seed << " step " << i;
      ASSERT_EQ(b_counter, backgrounds()) << "seed " << seed << " step " << i;
    }
    if (moving != 0) {
      queue.push_back(mouse(Type::release, 1));
      operate();
    }
    free_wd_objects();
    ASSERT_EQ(all_pixels(), model.base) << "seed " << seed << ": something stayed behind";
    ASSERT_EQ(b_counter, 0) << "seed " << seed;
  }
}

TEST_F(StackingTest, PressesThatWaitGoWithTheWindowTheyWereMeantFor) {
  register_wd_kind(
      closing_kind,
      {.put = put, .serve = [](int, const PointerEvent& press) {
         queue = {{.type = Type::press, .button = 1}, {.type = Type::release, .button = 1}};
         return Served{Command::free, press};
       }});
  start_wd_object(5, closing_kind, {100, 100, 200, 200}, WdFlags::none);
  ASSERT_EQ(put_wd_objects(5, 5), 0);
  queue = {{.type = Type::press, .button = 1, .x = 150, .y = 150}};
  EXPECT_EQ(engine_round().result, EngineRound::Result::nothing);
  EXPECT_EQ(wd(5).kind, kind_free);
  EXPECT_TRUE(queue.size() == 1 && queue[0].type == Type::release);
}

TEST_F(StackingTest, RefusalsSayWhy) {
  static StackingOrder order;
  start_wd_object(5, test_kind, {100, 100, 200, 200}, WdFlags::none);
  start_wd_object(6, test_kind, {100, 100, 200, 200}, WdFlags::none);
  ASSERT_EQ(put_wd_objects(6, 6), 0);
  start_wd_object(7, test_kind, {100, 100, 200, 200}, WdFlags::background_on_file);
  std::snprintf(wd(7).name, sizeof wd(7).name, "full");
  std::filesystem::create_symlink("/dev/full", "full.tmp");
  ErrorReporters reporters = console_reporters;
  reporters.illegal_pointer = [](int code) { return std::printf("%d", code); };
  reporters.file_error = [](int code) { return std::printf("file %d", code); };
  set_error_reporters(reporters);
  const std::string order_of = "find_stacking_order: ";
  const std::pair<std::string, int (*)()> cases[] = {
      {order_of + "invalid id=0\n311", [] { return find_stacking_order(0, &order); }},
      {order_of + "invalid id=129\n311", [] { return find_stacking_order(129, &order); }},
      {order_of + "id=4 is free\n312", [] { return find_stacking_order(4, &order); }},
      {order_of + "id=5 is not put\n313", [] { return find_stacking_order(5, &order); }},
      {"find_stacking_order_by_coord, could not find a window at (x,y)\n32",
       [] {
         return find_stacking_order_by_coord(90, 90, &order) + put_back_order(order, order.last);
       }},
      {"", [] { return update_over(129) & force_over(0); }},
      {"8", [] { return remove_background(0); }},
      {"10", [] { return fg_to_fgbuf(0); }},
      {"no fgbuf\n100", [] { return release_staging(), fg_to_fgbuf(6); }},
      {"3", [] { return if_b_opt_bgtofile(0); }},
      {"", [] { return -if_b_opt_bgtofile(6); }},
      {"4", [] { return if_b_opt_bgtofile(7); }},
      {"file 1", [] { return make_background(wd(7), false) + if_b_opt_bgtofile(7); }},
      {"", [] { return wd(7).background != nullptr ? 1 : 0; }},
      {"3", [] { return if_b_opt_bgfromfile(0); }},
      {order_of + "id=6 is hidden\n314",
       [] { return hide_wd_object(6), find_stacking_order(6, &order) + 1; }}};
  for (const auto& [said, call] : cases) {
    queue = {{.type = Type::key, .characters = {' '}, .character_count = 1}};
    EXPECT_EQ(printed_by([call = call] { EXPECT_EQ(call(), 1); }), said);
  }
  set_error_reporters(console_reporters);
  std::filesystem::remove("full.tmp");
}

}  // namespace
}  // namespace torve
