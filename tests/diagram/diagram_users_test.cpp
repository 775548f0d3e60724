// Random users of the whole diagram editor: palette, figures, their menus, files, undo, plots that
// are painted beneath. After every gesture the canvas is base, figures, menus, in that order.

#include <random>
#include <set>
#include <sstream>
#include <tuple>

#include "diagram/arc_editing.hpp"
#include "diagram/diagram_file.hpp"
#include "diagram/diagram_room.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/figure_menu.hpp"
#include "diagram/figure_points.hpp"
#include "diagram/files_menu.hpp"
#include "diagram/handle_painter.hpp"
#include "diagram/labels.hpp"
#include "diagram/model/diagram_text.hpp"
#include "diagram/picking.hpp"
#include "diagram/text_editing.hpp"
#include "dialogs/input_window.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/menu_table.hpp"

namespace torve {
namespace {

constexpr int last_id = 40, copy_line = 1, color_line = 2;

class DiagramUsers : public DiagramTest {
 protected:
  int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  bool one_in(int n) { return below(n) == 0; }

  void choose(int line) { DiagramTest::choose(line, below(680)); }

  // A diagram to start with: small enough a place that figures overlap, and names.
  void draw_many() {
    constexpr int (*tools[])() = {node_ope, nodeb_ope, nodec_ope, queue_ope,
                                  tele_ope, vbox_ope,  vline_ope, arrow_ope};
    for (int i = 0; i < 14; ++i) {
      tools[below(8)]();
      const int x = 200 + below(250), y = 150 + below(250);
      cvobj->colour = colour_pixel(below(15));
      vect_ed(1, x, y), vect_ed(1, x + below(200) - 60, y + below(150));
      if (one_in(2)) put_vlabel(VectorMode::clipped, x - 10, y - 20, "cpu one");
    }
    exit_ope();
  }

  void draw_something() {
    if (!one_in(3)) choose(1 + below(8));
    const int x = below(690), y = below(560);
    drag(x, y, one_in(3) ? x + below(30) - 15 : below(690), one_in(3) ? y : below(600));
    with_some_keys();
  }

  // With these keys held, all that is left to do.
  void with_some_keys() {
    const auto held = static_cast<Modifiers>(below(4));  // none, Shift, Control, both
    for (InputEvent& event : user_events)
      event.modifiers = held;
    play();
  }

  // On a figure, or anywhere.
  std::pair<int, int> some_place() {
    const Vobj* figure = firstvobj;
    for (int i = below(20); i > 0 && figure != nullptr; --i)
      figure = figure->next;
    if (figure == nullptr || figure->phase == 0) return {below(690), below(560)};
    return {(one_in(2) ? figure->x1 : figure->x2) + below(9) - 4, figure->y1 + below(30)};
  }

  void draw_an_arc() {
    if (!one_in(3)) choose(arc_line);
    for (int points = 1 + below(5); points > 0; --points) {
      const auto [x, y] = some_place();
      const auto [to_x, to_y] = some_place();
      if (one_in(3)) {
        drag(x, y, to_x, to_y);
      } else {
        click(x, y, 1, 600);
      }
      if (one_in(5)) click(x, y, 1, 600);
      with_some_keys();
    }
  }

  void write_a_text() {
    if (!one_in(3)) choose(text_line);
    const auto [x, y] = some_place();
    click(x, y, 1, 600), with_some_keys();
    type(one_in(4) ? "" : one_in(3) ? "work\b\b" : "arrivals at night"), play();
    if (one_in(2)) type("\r"), play();
  }

  // Control and D, Z, Y.
  void use_a_key() {
    const char* const keys[] = {"\x04", "\x1a", "\x1a\x1a\x19", "\x19"};
    type(keys[below(4)]), play();
  }

  // A press on a part of a figure, or on the place where it may have been.
  void pick_something() {
    if (figure_menu_is_on_top() && one_in(2)) return use_figure_menu();
    if (vobjmode != mode_pointer) choose(0);
    const Vobj* figure = firstvobj;
    for (int i = below(20); i > 0 && figure != nullptr && figure->next != nullptr; --i)
      figure = figure->next;
    if (figure == nullptr) return;
    const int xs[] = {figure->x1, figure->x2, (figure->x1 + figure->x2) / 2};
    const int ys[] = {figure->y1, figure->y2, (figure->y1 + figure->y2) / 2};
    const bool by_hand = one_in(2);
    const int part = by_hand ? below(3) : 2 * below(2);  // ends have no menu
    if (by_hand) return drag(xs[part], ys[part], 150 + below(300), 100 + below(350));
    const bool picks = vobjmode == mode_pointer;
    click(xs[part], ys[part], 3, 600), play();
    if (figure_menu_is_on_top() && !one_in(3)) return use_figure_menu();
    if (picks && vobjmode == mode_properties) name(property_menu_of(*cvobj));
  }

  // Where the figures stand and what they look like, whatever lies above what.
  using Looks = std::tuple<FigureKind, int, int, int, int, std::uint32_t, std::string>;
  static std::multiset<Looks> looks_of_all() {
    std::multiset<Looks> all;
    for (const auto& [f, label] : keep_diagram())
      all.insert({f.kind, f.x1, f.y1, f.x2, f.y2, f.colour, f.text});
    return all;
  }

  static bool figure_menu_is_on_top() {
    return is_eligible(wd(figure_menu_id)) && over_is_zero(figure_menu_id - 1) != 0;
  }

  // Cuts, copies or colours; a copy looks like its figure.
  void use_figure_menu() {
    const WdObject& menu = wd(figure_menu_id);
    const Vobj* figure = figure_of(static_cast<int>(menu.kind_word));
    const int line = below(3);
    if (line == color_line) click(menu.x + 68, line_row(menu, line), 1, 600), type("\b\b4\r");
    if (line != copy_line) return run_line(figure_menu_id, line);
    const auto look = [](const Vobj& f) {
      return std::tuple(f.kind, f.x2 - f.x1, f.y2 - f.y1, f.colour, std::string(f.text));
    };
    run_line(figure_menu_id, line), play();
    EXPECT_TRUE(vobjmode == mode_moving && cvobj != figure && look(*cvobj) == look(*figure));
  }

  // What is cut comes back, also a copy that has just been made.
  void cut_and_undo() {
    const std::multiset<Looks> before = looks_of_all();
    cut_current_figure();
    if (looks_of_all() != before) undo_ope();
    show_diagram_state();  // as the main loop does
    EXPECT_TRUE(looks_of_all() == before) << "cut and undone";
  }

  // Types into a field and lets the menu apply.
  void name(int id) {
    const WdObject& menu = wd(id);
    ASSERT_TRUE(is_eligible(menu) && !is_icon(menu)) << "it has just been asked for";
    const int line = menu.line_count == 11 ? 0 : below(menu.visible_lines);
    click(menu.x + 14 + 8 * (one_in(2) ? 5 : 14), line_row(menu, line), 1, 600);
    type(one_in(3) ? "\b\bnet %s\r" : "7\r");
    if (one_in(2)) click(menu.x + 4, menu.y + 4, 1, 600);
  }

  void use_a_menu() {
    std::vector<int> ids;
    for (int id = palette_id; id <= last_id; ++id) {
      if (is_eligible(wd(id))) ids.push_back(id);
    }
    if (ids.empty()) return;
    const int id = ids[static_cast<std::size_t>(below(static_cast<int>(ids.size())))];
    const WdObject& menu = wd(id);
    switch (below(5)) {
      case 0:
        return click(menu.x + 4, menu.y + 4, one_in(8) ? 3 : 1, 600);  // runs, moves
      case 1:
        return click(menu.x + menu.width - 4, menu.y + 4, one_in(2) ? 3 : 1, 600);  // closes
      case 2:
        return one_in(2) ? move(menu) : drag(menu.x + 60, menu.y + 4, below(680), below(560));
      default:
        return run_line(id, below(std::max(1, menu.visible_lines)));
    }
  }

  // The diagram's keys mean nothing meanwhile.
  void move(const WdObject& menu) {
    if (one_in(2)) click(menu.x + 40, line_row(menu, 0), 1, 600);
    press(menu.x + 4, menu.y + 4, 3, 600), Hands::move(below(680), below(200));
    add({.type = Type::key, .keysym = one_in(2) ? 0xFF1BUL : 0xFFFFUL});
    Hands::move(below(680), below(560)), release(400, 300, 3);
  }

  void act() {
    switch (below(10)) {
      case 0:
        return choose(below(palette_lines));
      case 1:
        return paint_base();
      case 2:
        return use_a_menu();
      case 3:
        if (one_in(4)) add({.type = Type::key, .keysym = one_in(2) ? 0xFF1BUL : 0xFFFFUL});
        if (one_in(4))
          click(wd(palette_id).x + 40,
                line_row(wd(palette_id), below(palette_lines)));  // runs nothing
        return;
      case 4:
        return draw_something();
      case 5:
        return one_in(2) ? draw_an_arc() : write_a_text();
      case 6:
        return use_a_key();
      default:
        pick_something(), play();
        return one_in(3) ? cut_and_undo() : void();
    }
  }

  void paint_base() {
    const int x = below(780), y = below(580), w = below(300), h = below(strip_area.y1 - y);
    const auto pixel = static_cast<std::uint32_t>(below(0xFFFFFF));
    const CanvasPaint scope({x, y, x + w, y + h});
    clear_win1(x, y, x + w, y + h, pixel);
    for (int row = y; row < y + h; ++row) {
      for (int column = x; column < std::min(x + w, 800); ++column)
        base_[static_cast<std::size_t>(row * 800 + column)] = pixel;
    }
  }

  // The palette's line of what a press on the canvas does now; another one while that goes on.
  static int line_of_mode() {
    constexpr int of_kinds[] = {8, 1, 4, 7, 6, 5, -1, -1, 2, 3};
    if (vobjmode == mode_idle) return -1;
    if (vobjmode == mode_arc_armed) return 12;
    if (vobjmode == mode_text_armed) return 13;
    return vobjmode == mode_pointer ? 0 : of_kinds[vobjmode - mode_armed - 1];
  }

  void check() {
    ASSERT_EQ(canvas_fault(base_), "");
    ASSERT_TRUE(X2mouse == 799 && Y2mouse >= 594) << "the pointer is shut in";
    const bool says = vobjmode == mode_idle || vobjmode == mode_pointer ||
                      (vobjmode > mode_armed && vobjmode <= mode_armed + 10) ||
                      vobjmode == mode_arc_armed;
    for (int line = 0; says && line < wd(palette_id).line_count; ++line)
      ASSERT_EQ(wd(palette_id).line_flags[line] & 1, line == line_of_mode() ? 1 : 0) << line;
    for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
      ASSERT_TRUE(figure->label == nullptr || owner_of(figure->label) == figure);
      ASSERT_TRUE(is_where_it_holds(*figure));
    }
    if (vobjmode == mode_pointer) {
      ASSERT_EQ(handle_fault(with_figures(base_)), "");
    }
  }

  // As far as it holds on to something that is there.
  static bool is_where_it_holds(const Vobj& figure) {
    const auto fits = [](const Hold& hold, int x, int y) {
      const Vobj* held = figure_of(hold.figure);
      if (held == nullptr) return hold.figure == 0;
      return x - (hold.x_of == 1 ? held->x1 : held->x2) == hold.dx &&
             y - (hold.y_of == 1 ? held->y1 : held->y2) == hold.dy;
    };
    return fits(figure.from, figure.x1, figure.y1) && fits(figure.to, figure.x2, figure.y2);
  }

  // From the empty diagram to this one each step is there.
  void undo_and_redo_all() {
    exit_ope();
    const auto all_the_way = [](int (*step)()) {
      for (int i = 0; i < 400; ++i)
        step();
      return diagram_to_text(keep_diagram());
    };
    const std::string end = all_the_way(redo_ope);
    for (int turn = 0; turn < 2; ++turn) {
      EXPECT_EQ(all_the_way(undo_ope), "torve-diagram 2\n");
      ASSERT_TRUE(all_pixels() == base_);
      ASSERT_TRUE(all_the_way(redo_ope) == end);
    }
    ASSERT_EQ(canvas_fault(base_), "");
  }

  // What a gesture has changed, undo takes back.
  void undo_one_change() {
    diagram_was_saved();
    prepare_change();  // a copy in hand and its first place would be one
    const std::multiset<Looks> before = looks_of_all();
    one_in(2) ? draw_something() : pick_something();
    play();
    if (!diagram_is_unsaved()) return;
    const std::multiset<Looks> after = looks_of_all();
    const bool shows_undo = is_eligible(wd(palette_id)) && over_is_zero(palette_id - 1) != 0;
    if (shows_undo) run_line(palette_id, undo_line);
    if (!shows_undo) undo_ope();
    play();
    EXPECT_TRUE(looks_of_all() == before) << "undone";
    type("\x19"), play();  // Control and Y
    EXPECT_TRUE(looks_of_all() == after) << "done again";
    if (one_in(2)) undo_ope();
  }

  void save_remove_and_read() {
    exit_ope();
    const std::string text = diagram_to_text(keep_diagram());
    const Pixels pixels = with_figures(base_);
    ASSERT_EQ(save_diagram("a.vob"), 0);
    free_vector_objects(VectorMode::clipped);
    ASSERT_TRUE(all_pixels() == base_);
    ASSERT_EQ(read_diagram("a.vob"), 0);
    EXPECT_EQ(diagram_to_text(keep_diagram()), text);
    exit_ope(), show_diagram_state();
    ASSERT_TRUE(all_pixels() == pixels);
  }

  std::mt19937 random_;
};

TEST_F(DiagramUsers, SeeBaseFiguresAndMenusInThatOrder) {
  for (unsigned seed = 1; seed <= asked("TORVE_SEEDS", 4) && !HasFatalFailure(); ++seed) {
    random_.seed(seed);
    base_ = all_pixels();
    draw_many();
    for (int round = 0; round < 80 && !HasFailure(); ++round) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " round " + std::to_string(round));
      one_in(6) ? undo_one_change() : act();
      play();
      check();
    }
    SCOPED_TRACE("seed " + std::to_string(seed));
    hide_errormsg();
    free_wd_objects_gt1_u();
    undo_and_redo_all();
    save_remove_and_read();
    close_everything();
    ASSERT_TRUE(all_pixels() == base_);
    ASSERT_LE(b_counter, 1);
  }
}

TEST_F(DiagramUsers, TakeLabelsAlong) {
  struct {
    int (*tool)();
    int head_dx, head_dy;  // how far the label goes when the head is moved by (10, 20)
  } const cases[] = {
      {node_ope, 10, 20}, {vbox_ope, 0, 20}, {vline_ope, 5, 10}, {arrow_ope, 10, 20}};
  for (const auto& [tool, head_dx, head_dy] : cases) {
    tool(), vect_ed(1, 300, 250), vect_ed(1, 200, 400);
    Vobj* figure = cvobj;
    put_vlabel(VectorMode::clipped, 290, 230, "old");
    put_vlabel(VectorMode::clipped, 290, 230, "cpu");
    EXPECT_EQ(keep_diagram().size(), 2U) << "one label in place of the other";
    auto moved = [&, x = figure->label->x1, y = figure->label->y1]() mutable {
      const std::pair way(figure->label->x1 - x, figure->label->y1 - y);
      x += way.first, y += way.second;
      return way;
    };
    vobjmode = -static_cast<int>(figure->kind), vect_ed(1, figure->x1 + 10, figure->y1 + 20);
    EXPECT_EQ(moved(), std::pair(head_dx, head_dy));
    const auto [cx, cy] = centre_of(*figure);
    vobjmode = mode_moving, vect_ed(1, cx - 50, cy + 30);
    EXPECT_EQ(moved(), std::pair(-50, 30));
    cvobj = figure->label, vobjmode = mode_moving, vect_ed(1, 500, 500);
    static_cast<void>(moved());
    cvobj = figure, vect_ed(1, cx, cy);
    EXPECT_EQ(moved(), std::pair(50, -30)) << "what was moved by hand keeps its distance";
    put_vlabel(VectorMode::clipped, 290, 230, "  ");
    EXPECT_EQ(figure->label, nullptr);
    close_everything();
  }
}

TEST_F(DiagramUsers, PressOnIconsOrBesideThem) {
  static int calls;
  calls = 0;
  const auto keep_diagram_out_once = [](int, int, int) {
    if (calls++ == 0) exit_vect_ed = 1;
    return 0;
  };
  const JumpEntry icons[] = {{10, 50, 540, 580, keep_diagram_out_once}, {}};
  const struct {
    int x, y, colour_asked, calls;
    bool placed;
    const char* what;
  } presses[] = {
      {10, 560, 0, 0, true, "the border line is not the icon"},
      {11, 541, 0, 1, false, "the icon's press is spent"},
      {300, 300, 0, 1, false, "the handler keeps the diagram out"},
      {49, 579, 0, 2, false, "another lets it in again"},
      {300, 300, 0, 2, true, "from the next press on"},
      {30, 560, 1, 2, false, "a colour is asked for"},
      {300, 300, 1, 2, false, "whatever is pressed"},
  };
  for (const auto& press : presses) {
    node_ope();
    color_request_flag = press.colour_asked;
    const int armed = vobjmode;
    click(press.x, press.y, 1, 600), play(icons);
    EXPECT_EQ(calls, press.calls) << press.what;
    EXPECT_EQ(vobjmode != armed, press.placed) << press.what;
    exit_ope();
  }
  color_request_flag = 0;
}

TEST_F(DiagramUsers, FindAMenuOnTopThatTheyChoose) {
  constexpr int files_line = 10;
  choose(files_line);
  drag(wd(diagram_files_id).x + 4, 4, wd(diagram_files_id).x + 104, 4, 3), play();
  const auto raised = [] { return bring_id_to_top(palette_id, 1); };
  EXPECT_EQ(printed_by(raised), "") << "nothing was wrong";
  choose(files_line);
  EXPECT_NE(over_is_zero(diagram_files_id - 1), 0);
  EXPECT_EQ(over_is_zero(palette_id - 1), 0);
}

// A figure is in hand, a line of the palette was pressed and not run.
TEST_F(DiagramUsers, MoveAWindowWhateverKeysTheyPress) {
  base_ = all_pixels();
  node_ope(), vect_ed(1, 300, 250), vect_ed(1, 300, 400);
  choose(0), click(300, 325), play();
  ASSERT_EQ(vobjmode, mode_moving);
  const WdObject& palette = wd(palette_id);
  for (const unsigned long key : {0xFF1BUL, 0xFFFFUL}) {
    click(palette.x + 40, line_row(palette, 3), 1, 600);
    press(palette.x + 4, palette.y + 4, 3, 600), Hands::move(250, 230), Hands::move(270, 330);
    add({.type = Type::key, .keysym = key});
    Hands::move(400, 100), release(400, 100, 3);
    play(), check();
    EXPECT_TRUE(figure_is_in_hand());
    EXPECT_EQ(palette.line_flags[0], line_selected);
  }
}

TEST_F(DiagramUsers, PrintNamesAsTheyAre) {
  node_ope(), vect_ed(1, 300, 250), vect_ed(1, 300, 400);
  put_vlabel(VectorMode::clipped, 290, 230, "f(x)\\ quit");
  ASSERT_EQ(print_diagram("a.eps"), 0);
  std::ostringstream printed;
  printed << std::ifstream("a.eps").rdbuf();
  EXPECT_NE(printed.str().find("(f\\(x\\)\\\\ quit) show"), std::string::npos);
}

TEST_F(DiagramUsers, SeeFiguresInAWidenedWindow) {
  clearwin(0, 0, 680, strip_area.y1, 7);
  base_ = all_pixels();
  vbox_ope(), vect_ed(1, 250, 210), vect_ed(1, 290, 240), exit_ope();
  make_input_window(6, 103, 200, 160, 68, 15, 1, 0, 0, "w", 0, -1, -1, nullptr);
  ASSERT_EQ(put_wd_objects(6, 6), 0);
  drag(262, 245, 310, 245), play();
  EXPECT_EQ(getpixel2c(290, 225), 0U);
  close_everything();
  EXPECT_TRUE(all_pixels() == base_);
}

// Each part is picked in its rows and nowhere beside them; the first that fits counts.
TEST_F(DiagramUsers, PickPartsByTheirReach) {
  using enum FigurePart;
  struct Rows {
    int first, last;
  };
  const struct {
    FigurePlace place;
    int middle_x;
    Rows middle, end, head;
  } cases[] = {
      {{100, 100, 160, 200}, 130, {141, 159}, {191, 200}, {100, 109}},
      {{160, 100, 100, 130}, 130, {113, 117}, {128, 130}, {100, 102}},
      {{100, 100, 131, 129}, 115, {113, 115}, {128, 129}, {100, 101}},
      {{100, 130, 160, 100}, 130, {114, 116}, {99, 100}, {130, 131}},
      {{120, 100, 120, 104}, 120, {101, 103}, {103, 104}, {100, 101}},
  };
  for (const auto& [place, middle_x, in_middle, at_end, at_head] : cases) {
    Vobj figure;
    figure.x1 = place.x1, figure.y1 = place.y1, figure.x2 = place.x2, figure.y2 = place.y2;
    for (int x = 80, y = 80; y < 220; ++x == 180 ? x = 80, ++y : 0) {
      const auto in = [x, y](int column, int beside, const Rows& rows) {
        return std::abs(x - column) <= beside && rows.first <= y && y <= rows.last;
      };
      FigurePart first = in(place.x2, 1, at_end) ? end : in(place.x1, 1, at_head) ? head : none;
      FigurePart second = in(place.x1, 4, at_head) ? properties : none;
      if (in(middle_x, 1, in_middle)) first = second = middle;
      const auto pressed = [x, y](int button) {
        return PointerEvent{.action = PointerAction::press, .button = button, .x = x, .y = y};
      };
      ASSERT_EQ(part_at(figure, pressed(1)), first) << x << ", " << y << " of " << place.y2;
      ASSERT_EQ(part_at(figure, pressed(2)), second) << x << ", " << y << " of " << place.y2;
    }
  }
}

// Where the points of a node (a box), from (300, 200) to (300, 300), are after a press and a drag.
TEST_F(DiagramUsers, DragWhatTheyPick) {
  const struct {
    const char* what;
    int (*tool)();
    int from_x, from_y, to_x, to_y;
    FigurePlace place;
  } cases[] = {
      {"the whole", node_ope, 301, 259, 350, 280, {350, 230, 350, 330}},
      {"the end", node_ope, 299, 291, 350, 280, {350, 200, 350, 280}},
      {"the end, not above the head", node_ope, 300, 300, 350, 150, {350, 200, 350, 200}},
      {"the head", node_ope, 300, 209, 350, 280, {350, 280, 350, 300}},
      {"the head of a cross", nodec_ope, 300, 209, 350, 280, {350, 280, 300, 300}},
      {"the end of a box", vbox_ope, 300, 300, 350, 150, {300, 200, 350, 150}},
      {"the end of a telephone", tele_ope, 300, 300, 350, 400, {328, 386, 350, 400}},
      {"as far as the diagram", node_ope, 300, 250, 679, 250, {679, 200, 679, 300}},
      {"and no farther", node_ope, 300, 250, 680, 250, {490, 200, 490, 300}},
  };
  for (const auto& [what, tool, from_x, from_y, to_x, to_y, place] : cases) {
    tool(), vect_ed(1, 300, 200), vect_ed(1, 300, 300);
    Vobj* figure = cvobj;
    const int serial = cvobj->serial;
    const auto points = [](const Vobj& f) { return std::tuple(f.x1, f.y1, f.x2, f.y2); };
    const std::tuple wanted(place.x1, place.y1, place.x2, place.y2);
    pointer_ope(), drag(from_x, from_y, to_x, to_y), play();
    EXPECT_EQ(points(*figure), wanted) << what;
    drag(400, 300, 410, 320), play();  // goes on with what is in hand
    undo_ope(), drag(500, 100, 550, 120), play();
    figure = figure_of(serial);  // gone if nothing of it was to be seen
    EXPECT_TRUE(figure == nullptr ? place.y1 == place.y2 : points(*figure) == wanted) << what;
    close_everything();
  }
}

// The menu's line lies right of the diagram, or within.
TEST_F(DiagramUsers, GetACopyUnderThePointer) {
  for (const auto& [x, pointer_x, copy_x] : {std::tuple(660, 702, 679), {300, 326, 326}}) {
    node_ope(), vect_ed(1, x, 200), vect_ed(1, x, 300);
    pointer_ope(), click(x, 250, 3, 600), play();
    double_click(pointer_x, line_row(wd(figure_menu_id), copy_line)), play();
    EXPECT_EQ(std::tuple(cvobj->x1, cvobj->y1, cvobj->y2), std::tuple(copy_x, 232, 332));
    close_everything();
  }
}

// Only that comes back, and the tool stays what it was.
TEST_F(DiagramUsers, UndoWhatAMenuDid) {
  constexpr int cut_line = 0;
  const std::tuple<int, int (*)(), int> cases[] = {
      {cut_line, exit_ope, mode_idle}, {cut_line, queue_ope, 13}, {copy_line, exit_ope, mode_idle}};
  for (const auto& [line, tool, mode] : cases) {
    node_ope(), vect_ed(1, 300, 200), vect_ed(1, 300, 300);
    vline_ope(), vect_ed(1, 100, 100), vect_ed(1, 150, 100);
    pointer_ope(), click(300, 250, 3, 600), play(), run_line(figure_menu_id, line), play();
    EXPECT_EQ(keep_diagram().size(), line == cut_line ? 1U : 3U);
    tool(), undo_ope();
    EXPECT_EQ(keep_diagram().size(), 2U) << line;
    EXPECT_EQ(vobjmode, mode) << line;
    close_everything();
  }
}

// Its menu was opened when the figure was still on top, and no other one in the hand.
TEST_F(DiagramUsers, ColourAFigureWithItsLabel) {
  const std::uint32_t unchanged = colour_pixel(2);
  const std::tuple<const char*, std::uint32_t> cases[] = {
      {"4", colour_pixel(4)}, {"0", colour_pixel(0)}, {"20", colour_pixel(20)}, {"21", unchanged},
      {"-1", unchanged},      {"red", unchanged},     {"2", unchanged}};
  for (const auto& [typed, colour] : cases) {
    base_ = all_pixels();
    node_ope();
    Vobj* figure = cvobj;
    figure->colour = unchanged;
    vect_ed(1, 300, 200), vect_ed(1, 300, 300);
    put_vlabel(VectorMode::clipped, 290, 180, "cpu");
    vline_ope(), vect_ed(1, 280, 210), vect_ed(1, 350, 240);
    Vobj* other = cvobj;
    pointer_ope(), click(300, 250, 3, 600), play();
    raise_figure(other), vobjmode = mode_moving;
    click(wd(figure_menu_id).x + 68, line_row(wd(figure_menu_id), color_line), 1, 600);
    type("\b\b" + std::string(typed) + "\r"), run_line(figure_menu_id, color_line), play();
    EXPECT_EQ(std::tuple(figure->colour, figure->label->colour), std::tuple(colour, colour))
        << typed;
    EXPECT_EQ(canvas_fault(base_), "") << typed;
    EXPECT_EQ(vobjmode, mode_pointer) << "the other one is let go";
    close_everything();
  }
}

}  // namespace
}  // namespace torve
