// Property menus: what they show of figures and store in them.

#include "diagram/properties/property_menus.hpp"

#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/properties/vocabulary.hpp"
#include "dialogs/player.hpp"

namespace torve {
namespace {

using Texts = std::vector<std::string>;
using enum FigureKind;

constexpr int id = 17;

class PropertyMenus : public DialogTest {
 protected:
  PropertyMenus() {
    EXPECT_EQ(init_font2(6), 0);
    xxmin = yymin = 0, xxmax = 680, yymax = 599;
    reset_history();
    write_file("nodeattrs.dat", "");
  }
  ~PropertyMenus() override {
    free_wd_objects();
    free_vector_objects(VectorMode::clipped);
    free_font2();
  }

  static Vobj* placed(FigureKind kind, int x = 300) {
    Vobj* figure = create_vector_obj(kind);
    figure->x1 = x, figure->y1 = 100, figure->x2 = x + 40, figure->y2 = 200;
    figure->phase = phase_on_canvas | phase_draw;
    figure->servers = 2, figure->ps_mode = 6, figure->selection_rule = 3, figure->exit_filter = 2;
    std::copy_n(std::data({1.5, -2.5, 3.5, 4.5}), 4, figure->value);
    figure->integer[0] = 8, figure->integer[1] = 77;
    std::strcpy(figure->name, "Host");
    return figure;
  }
  static Texts shown(Vobj* figure, int menu = id) {
    EXPECT_EQ(fill_property_menu(figure, menu, 400, 300), 0);
    Texts texts;
    for (int i = 0; i < wd(menu).item_count; ++i)
      texts.emplace_back(wd(menu).menu_items[i].text);
    return texts;
  }
  static void enter(int field, const std::string& text, int menu = id) {
    std::snprintf(wd(menu).menu_items[field].text, field_room, "%s", text.c_str());
  }
  static int run(int menu = id) {
    const WdObject& object = wd(menu);
    return wd_actions[menu - 1](menu - 1, object.line_flags, object.menu_items, object.menu_lines);
  }
};

// Each field as line * 100 + column = text.
TEST_F(PropertyMenus, EveryKindShowsItsOwn) {
  const char* attributes =
      "5=Host|106=2|206=6|306=3|406=2|506=1.5|606=-2.5|706=3.5|806=4.5|906=8|1007=77|";
  const std::tuple<FigureKind, int, int, std::string> cases[] = {
      {node, 240, 6, "8=2|108=LOSS-SYSTEM|215=ClassDependent|312=ACG 2|405=Host|513=4.5|"},
      {vbox, 240, 5, "8=2|108=LOSS-SYSTEM|215=ClassDependent|312=ACG 2|405=Host|"},
      {vline, 240, 3, "8=2|108=LOSS-SYSTEM|215=ClassDependent|"},
      {nodeb, 240, 11, attributes},
      {nodec, 240, 11, attributes},
      {queue, 320, 9,
       "23=exponential 0|115=6|206=3|224=2|817=1.5|422=-2.5|522=3.5|613=4.5|721=user1|324=77|"},
      {tel, 240, 6, "23=exponential|111=3|117=2|220=6|313=4.5|422=-2.5|522=3.5|"},
  };
  for (const auto& [kind, width, rows, fields] : cases) {
    shown(placed(kind));
    std::string found;
    for (int i = 0; i < wd(id).item_count; ++i) {
      const MenuItem& item = wd(id).menu_items[i];
      found += std::to_string(item.y / cr * 100 + item.x / cs) + "=" + item.text + "|";
    }
    EXPECT_EQ(found, fields);
    EXPECT_EQ(wd(id).width * 1000 + wd(id).height, width * 1000 + 24 + rows * 11);
    EXPECT_TRUE(has(wd(id).flags, WdFlags::close_hides));
  }
  for (const FigureKind kind : {arrow, FigureKind::label, vcircle}) {
    Vobj* figure = placed(kind);
    EXPECT_EQ(fill_property_menu(figure, 18, 8, 8) + figure->menu_id, 1);
  }
  Vobj* small = placed(queue);
  small->spare[1] = 1;
  EXPECT_EQ(fill_property_menu(small, 18, 679, 590), 0);
  EXPECT_EQ(std::tuple(wd(18).x, wd(18).y, wd(18).visible_lines), std::tuple(480, 543, 3));
}

// What a menu shows is what the figure holds after it has been applied, whatever was there before.
TEST_F(PropertyMenus, WhatIsShownIsStored) {
  std::mt19937 random(5);
  const auto any = [&random](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  for (int i = 0; i < 350; ++i) {
    constexpr FigureKind kinds[] = {node, queue, vline, vbox, tel, nodeb, nodec};
    Vobj* figure = placed(kinds[i % 7]);
    for (double& value : figure->value)  // six digits, both signs
      value = any(-999999, 999999) / 1000.0;
    figure->servers = figure->kind == tel ? any(1, 9) : any(-999999, 999999) * 16 + any(1, 9);
    if (figure->kind == queue || figure->kind == nodeb) figure->exit_filter = any(-999999, 999999);
    figure->integer[0] = any(1, 9), figure->integer[1] = any(-999999, 999999);
    std::strcpy(figure->name, &"abcd efghijklmnopqrst"[any(1, 20)]);
    diagram_was_saved();
    const Texts texts = shown(figure);
    EXPECT_FALSE(diagram_is_unsaved()) << "that a menu opens is no change";
    figure->servers = figure->ps_mode = figure->selection_rule = figure->exit_filter = 1;
    std::fill_n(figure->value, 4, figure->integer[0] = figure->integer[1] = 1);
    figure->name[0] = 0;
    vobjmode = i % 2 == 0 ? mode_properties : mode_pointer;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(wd(id).kind, kind_free);
    EXPECT_EQ(figure->menu_id + vobjmode, 0);
    EXPECT_TRUE(diagram_is_unsaved());
    EXPECT_EQ(shown(figure), texts);
    reset_history();
    free_vector_objects(VectorMode::clipped);
  }
  Vobj* exact = placed(queue);
  exact->value[0] = 1234.5678;
  EXPECT_EQ(shown(exact).at(4), "1234.57");
  run();
  EXPECT_EQ(exact->value[0], 1234.5678) << "what was not edited stays";
}

TEST_F(PropertyMenus, CodesWithoutAWordBecomeOne) {
  const struct {
    FigureKind kind;
    int& (*code)(Vobj&);
    int before, after;
    std::size_t field;
    const char* text;
  } cases[] = {
      {node, [](Vobj& f) -> int& { return f.ps_mode; }, 0, 1, 1, "FIFO"},
      {vbox, [](Vobj& f) -> int& { return f.exit_filter; }, -1, 0, 3, "none"},
      {queue, [](Vobj& f) -> int& { return f.servers; }, 3 << 4, 49, 0, "deterministic 3"},
      {queue, [](Vobj& f) -> int& { return f.servers; }, -2, -15, 0, "deterministic -1"},
      {queue, [](Vobj& f) -> int& { return f.integer[0]; }, 0, 3, 8, "user-model"},
      {tel, [](Vobj& f) -> int& { return f.servers; }, 17, 1, 0, "deterministic"},
  };
  for (const auto& test : cases) {
    Vobj* figure = placed(test.kind);
    test.code(*figure) = test.before;
    EXPECT_EQ(shown(figure).at(test.field), test.text);
    EXPECT_EQ(test.code(*figure), test.after);
  }
}

// Typed into every field of a node: numbers and name take what they can, words stay.
TEST_F(PropertyMenus, StrangeTextsDoNoHarm) {
  // What is no number leaves the old one; three words and perhaps two numbers are refused.
  const std::tuple<const char*, const char*, const char*, const char*, int> cases[] = {
      {"123456789012345678901234567890", "2147483647", "12345678901234567890", "1.23457e+29", 3},
      {"twenty-five characters...", "2", "twenty-five characte", "4.5", 5},
      {"inf", "2", "inf", "4.5", 5},
      {"-1e999", "-1", "-1e999", "-1.79769e+308", 3},
      {"-", "2", "-", "4.5", 5},
      {"%s%n%s%n", "2", "%s%n%s%n", "4.5", 5},
      {"", "2", "", "4.5", 5},
      {"2.75", "2", "2.75", "2.75", 4},
      {"7.00", "7", "7.00", "7", 3},
      {"0,5", "2", "0,5", "0.5", 4},
  };
  for (const auto& [text, servers, name, length, refused] : cases) {
    Vobj* figure = placed(node);
    shown(figure);
    for (int field = 0; field < 6; ++field)
      enter(field, text);
    type(std::string(static_cast<std::size_t>(refused), 'k'));  // each waits for a key
    std::string said;
    for (int i = 0; i < refused; ++i)
      said += "unknown_parameter\n";
    EXPECT_EQ(printed_by([] { EXPECT_EQ(run(), 0); }), said) << text;
    EXPECT_TRUE(user_events.empty());
    EXPECT_EQ(shown(figure),
              (Texts{servers, "LOSS-SYSTEM", "ClassDependent", "ACG 2", name, length}));
    EXPECT_EQ(figure->label != nullptr ? figure->label->text : "", std::string(name));
  }
}

TEST_F(PropertyMenus, ShowLongNumbersAndWordsThatAreAlikeWhole) {
  const struct {
    int code;
    double rate;
    int width;
    std::string line;
  } cases[] = {
      {1, 1234, 240, "arrival rate        calls/s"},
      {9, 1234567, 296, "arrival rate               calls/s"},
      {3, 0.125, 288, "arrival rate         calls/s"},
      {2, 0.0000125, 272, "arrival rate            calls/s"},
  };
  for (const auto& [code, rate, width, line] : cases) {
    Vobj* figure = placed(tel);
    figure->servers = code, figure->value[3] = rate;
    shown(figure);
    EXPECT_EQ(wd(id).width, width) << rate;
    const std::string text = wd(id).menu_lines[3];
    EXPECT_EQ(text.substr(0, line.size()), line);
  }
}

// All but the two cells that the cursor needed at the end.
TEST_F(PropertyMenus, FieldsBecomeNarrowWhenTheyAreErased) {
  for (const auto& [kind, fields] :
       {std::pair(tel, std::vector{2, 4, 6}), {queue, std::vector{3, 6, 7}}}) {
    shown(placed(kind));
    put(id);
    for (const int field : fields) {
      const MenuItem& item = wd(id).menu_items[field];
      const std::string text = item.text;
      const int width = item.width;
      click(wd(id).x + 16 + item.x + 3, wd(id).y + 16 + item.y + 4, 1, 900);
      type("123456789" + std::string(9 + text.size(), '\b') + text + '\r'), play();
      EXPECT_EQ(item.text, text);
      EXPECT_LE(item.width, width + 2) << wd(id).menu_lines[0] << field;
    }
    free_one_wd_object(id);
  }
}

TEST_F(PropertyMenus, ShowWhatUndoHasBroughtBack) {
  Vobj* figure = placed(node);
  prepare_change();
  figure->servers = 7;
  note_change();
  shown(figure);
  enter(4, "typed");
  undo_ope();
  EXPECT_EQ(std::string(wd(id).menu_items[0].text) + wd(id).menu_items[4].text, "2typed");
}

TEST_F(PropertyMenus, EachMenuHasItsOwnFigure) {
  Vobj* figures[] = {placed(node, 100), placed(vbox, 300), placed(vline, 500)};
  for (int i = 0; i < 3; ++i)
    shown(figures[i], id + i);
  enter(4, "left", id), enter(4, "middle", id + 1), enter(0, "12", id + 2);
  for (int i = 2; i >= 0; --i) {
    if (i == 0) let_change_go_on();  // a copy is in hand
    EXPECT_EQ(run(id + i), 0);
  }
  const std::tuple<int, int, std::string> labels[] = {
      {90, 80, "left"}, {300, 88, "middle"}, {524, 136, "12"}};
  for (int i = 0; i < 3; ++i) {
    const Vobj* label = figures[i]->label;
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(std::tuple(label->x1, label->y1, std::string(label->text)), labels[i]);
  }
  undo_ope();
  EXPECT_STREQ(figures[0]->name, "Host");
  EXPECT_STREQ(figures[1]->name, "middle") << "one change is undone";
}

TEST_F(PropertyMenus, FiguresMayBeGoneOrNotPlacedYet) {
  Vobj* figure = placed(node);
  shown(figure);
  node_ope();
  enter(0, "9");
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(figure->servers, 9);
  EXPECT_TRUE(cvobj == figure && vobjmode == mode_idle);
  for (const Vobj* other = firstvobj; other != nullptr; other = other->next)
    EXPECT_NE(other->phase, 0) << "the armed tool was left";
  shown(figure);
  remove_vobj(figure);
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(wd(id).kind, kind_free);
}

// Double presses go through every word; the figure has the last one when it is applied.
TEST_F(PropertyMenus, WordsGoRoundUntilTheyAreApplied) {
  const std::tuple<FigureKind, int, int, int, int Vobj::*, Vocabulary> cases[] = {
      {node, 1, 1, 6, &Vobj::ps_mode, ps_modes},
      {vline, 2, 2, 3, &Vobj::selection_rule, selection_rules},
      {vbox, 3, 3, 2, &Vobj::exit_filter, exit_filters},
      {tel, 0, 0, 2, &Vobj::servers, distributions},
  };
  for (const auto& [kind, line, field, before, code, words] : cases) {
    Vobj* figure = placed(kind);
    shown(figure);
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
      wd(id).line_flags[line] = line_selected | line_double_clicked;
      EXPECT_EQ(run(), 0);
      EXPECT_EQ(figure->*code, before) << wd(id).menu_items[field].text;
    }
    const auto at = std::find_if(words.begin(), words.end(),
                                 [b = before](const VocabularyEntry& e) { return e.code == b; });
    const VocabularyEntry& wanted = at == words.begin() ? words.back() : *(at - 1);
    EXPECT_STREQ(wd(id).menu_items[field].text, wanted.word);
    run();
    EXPECT_EQ(figure->*code, wanted.code);
  }
}

TEST_F(PropertyMenus, SitesNameAttributes) {
  rlimit files = {}, no_files = {};
  getrlimit(RLIMIT_NOFILE, &files);
  no_files.rlim_max = files.rlim_max;
  const struct {
    std::string file, labels;
    bool can_be_opened = true;
  } cases[] = {
      {"  Speed \r\nDelay\t\n  Two words\n", "Name |Speed |Delay |Two words |Attr4 |"},
      {std::string(100, 'x') + "\n" + std::string(300, 'y') + "\nthird",
       "Name |xxxxxxxxxxxxxxxxxx |yyyyyyyyyyyyyyyyyy |third |Attr4 |"},
      {"\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n", "Name | |2 |3 |4 |"},
      {"", "Name |Attr1 |Attr2 |Attr3 |Attr4 |"},
      {"Speed\n", "Name |Attr1 |Attr2 |Attr3 |Attr4 |", false},
      {"none", "Name |Attr1 |Attr2 |Attr3 |Attr4 |"},  // the program's own
      {"pipe", "Name |Attr1 |Attr2 |Attr3 |Attr4 |"},  // nobody writes into it
  };
  Vobj* figure = placed(nodeb);
  for (const auto& test : cases) {
    write_file("nodeattrs.dat", test.file);
    if (test.file == "none" || test.file == "pipe") std::filesystem::remove("nodeattrs.dat");
    if (test.file == "pipe") {
      ASSERT_EQ(mkfifo("nodeattrs.dat", 0600), 0);
    }
    EXPECT_EQ(printed_by([&] {
                if (!test.can_be_opened) setrlimit(RLIMIT_NOFILE, &no_files);
                shown(figure);
                setrlimit(RLIMIT_NOFILE, &files);
              }),
              test.can_be_opened ? "" : "cannot_find_file\n");
    std::string found;
    for (int line = 0; line < 5; ++line) {
      const MenuItem& item = wd(id).menu_items[line];
      EXPECT_LT(item.x / cs + item.width, wd(id).line_size);
      found +=
          std::string(wd(id).menu_lines[line]).substr(0, static_cast<unsigned>(item.x / cs)) + "|";
    }
    EXPECT_EQ(found, test.labels);
  }
}

}  // namespace
}  // namespace torve
