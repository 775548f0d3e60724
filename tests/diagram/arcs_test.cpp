// Arcs and texts, drawn and moved as a person does.

#include "diagram/model/arcs.hpp"

#include <tuple>

#include "diagram/arc_editing.hpp"
#include "diagram/diagram_room.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/figure_menu.hpp"
#include "diagram/labels.hpp"
#include "diagram/model/diagram_text.hpp"
#include "diagram/model/figure_kinds.hpp"
#include "diagram/model/kept_diagram.hpp"

namespace torve {
namespace {

class Arcs : public DiagramTest {
 protected:
  // A node and a queue.
  Arcs() {
    node_ope(), vect_ed(1, 100, 100), vect_ed(1, 100, 200);
    node = cvobj->serial;
    queue_ope(), vect_ed(1, 300, 100), vect_ed(1, 300, 200);
    queue = cvobj->serial;
    exit_ope();
  }

  static void held(Modifiers keys) {
    for (InputEvent& event : user_events)
      event.modifiers = keys;
    play();
  }

  static std::vector<FigureRecord> all(FigureKind kind) {
    std::vector<FigureRecord> found;
    for (const auto& [figure, label] : keep_diagram()) {
      if (figure.kind == kind) found.push_back(figure);
    }
    return found;
  }

  int node = 0, queue = 0;
};

// Points that are pressed; "a drag" goes from the first to the second one.
TEST_F(Arcs, EndWhereTheyArePressed) {
  const FigureAnchor on_node = {111, 105}, on_queue = {288, 150}, free = {200, 50},
                     bend = {200, 300};
  const struct {
    const char* what;
    bool is_drag;
    std::vector<FigureAnchor> presses;
    std::size_t bends;
    bool from, to, is_next_armed;
  } cases[] = {
      {"from figure to figure", false, {on_node, on_queue}, 0, true, true, true},
      {"a drag", true, {on_node, on_queue}, 0, true, true, false},
      {"twelve pixels are near", false, {{122, 105}, {88, 105}}, 0, true, true, true},
      {"thirteen are not", false, {{123, 105}, on_queue}, 0, false, true, true},
      {"over a bend", false, {on_node, bend, on_queue}, 1, true, true, true},
      {"twice on the same place", false, {free, bend, free, {202, 48}}, 1, false, false, true},
      {"it goes on", false, {on_node, bend, free}, 1, true, false, false},
      {"its beginning is no end", false, {on_node, on_node, free}, 0, true, false, false},
  };
  for (const auto& [what, is_drag, presses, bends, from, to, is_next_armed] : cases) {
    SCOPED_TRACE(what);
    arc_ope();
    if (is_drag) {
      drag(presses[0].x, presses[0].y, presses[1].x, presses[1].y), play();
    } else {
      for (const auto& [x, y] : presses)
        click(x, y, 1, 600), play();
    }
    EXPECT_EQ(vobjmode == mode_arc_armed, is_next_armed);
    const std::vector<FigureRecord> arcs = all(FigureKind::arc);
    ASSERT_EQ(arcs.size(), 1U);
    EXPECT_EQ(arcs[0].bends.size(), bends);
    EXPECT_EQ(std::pair(arcs[0].from.figure != 0, arcs[0].to.figure != 0), std::pair(from, to));
    undo_ope();
    EXPECT_EQ(all(FigureKind::arc).size(), 0U) << "one change";
    exit_ope();
  }
}

// Where the ends of an arc from the node's head to the queue are after something.
TEST_F(Arcs, GoAlongWithFigures) {
  const struct {
    const char* what;
    FigureAnchor from, to;  // a drag
    FigurePlace place;
    bool holds_first, holds_second;
  } cases[] = {
      {"the node moves", {100, 150}, {150, 180}, {160, 135, 304, 160}, true, true},
      {"the queue's foot is pulled", {300, 200}, {320, 260}, {110, 105, 324, 220}, true, true},
      {"so is its head, the foot stays", {300, 100}, {310, 120}, {110, 105, 314, 160}, true, true},
      {"the end is pulled away", {304, 160}, {400, 300}, {110, 105, 400, 300}, true, false},
      {"the arc is moved", {207, 132}, {217, 142}, {120, 115, 314, 170}, false, false},
      {"its beginning goes to the queue", {110, 106}, {302, 120}, {302, 120, 304, 160}, true, true},
  };
  for (const auto& [what, from, to, place, holds_first, holds_second] : cases) {
    SCOPED_TRACE(what);
    arc_ope(), click(110, 105, 1, 600), play(), click(304, 160, 1, 600), play();
    const std::string before = diagram_to_text(keep_diagram());
    pointer_ope(), drag(from.x, from.y, to.x, to.y), play();
    const FigureRecord arc = all(FigureKind::arc).at(0);
    EXPECT_EQ(std::tuple(arc.x1, arc.y1, arc.x2, arc.y2),
              std::tuple(place.x1, place.y1, place.x2, place.y2));
    EXPECT_EQ(std::pair(arc.from.figure != 0, arc.to.figure != 0),
              std::pair(holds_first, holds_second));
    EXPECT_EQ(canvas_fault(base_ = base_now()), "");
    undo_ope();
    EXPECT_EQ(diagram_to_text(keep_diagram()), before);
    undo_ope(), exit_ope();
  }
  arc_ope(), click(110, 105, 1, 600), play(), click(304, 160, 1, 600), play();
  cvobj = figure_of(node), vobjmode = mode_moving, type("\x04"), play();
  EXPECT_EQ(all(FigureKind::node).size(), 2U);
  cvobj = figure_of(node), vobjmode = mode_moving, add({.type = Type::key, .keysym = 0xFFFF}),
  play();
  EXPECT_EQ(all(FigureKind::arc).at(0).from.figure, 0) << "what it held on to was cut";
  type("\x1a"), play();
  EXPECT_EQ(all(FigureKind::arc).at(0).from.figure, node);
}

TEST_F(Arcs, KeysKeepLinesStraightAndPointsOnAGrid) {
  using enum Modifiers;
  const std::tuple<Modifiers, FigureAnchor, FigureAnchor> cases[] = {
      {none, {473, 371}, {473, 371}},    {shift, {473, 409}, {473, 403}},
      {shift, {473, 371}, {434, 371}},   {shift, {600, 415}, {600, 403}},
      {shift, {413, 300}, {402, 300}},   {shift, {340, 340}, {340, 341}},
      {control, {474, 366}, {470, 370}}, {control, {679, 594}, {670, 590}},
  };
  for (const auto& [keys, to, end] : cases) {
    for (const auto tool : {arrow_ope, vline_ope, arc_ope}) {
      tool(), drag(402, 403, to.x, to.y), held(keys);
      const FigureRecord& figure = *cvobj;
      const bool on_grid = keys == control;
      EXPECT_EQ(std::tuple(figure.x1, figure.y1, figure.x2, figure.y2),
                std::tuple(on_grid ? 400 : 402, on_grid ? 400 : 403, end.x, end.y))
          << to.x;
      exit_ope();
    }
  }
}

TEST_F(Arcs, TextsAreNamesOrGoAlong) {
  text_ope(), click(296, 92, 1, 600), play(), type("jobz\bs\r"), play();
  EXPECT_STREQ(figure_of(queue)->name, "jobs");
  ASSERT_NE(figure_of(queue)->label, nullptr);
  click(296, 92, 1, 600), play(), type(" 2"), play();  // the same text goes on
  EXPECT_STREQ(figure_of(queue)->label->text, "jobs 2");
  EXPECT_TRUE(diagram_key('d') && diagram_key('\b') && diagram_key('\r'))
      << "nothing else happens with a letter";
  click(105, 205, 1, 600), play(), type("slow"), play();
  click(500, 300, 1, 600), play();  // nothing is typed
  pointer_ope(), drag(100, 150, 150, 180), play();
  const auto texts = all(FigureKind::label);
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(std::tuple(texts[1].x1, texts[1].y1, std::string(texts[1].text)),
            std::tuple(155, 235, "slow"));
  EXPECT_EQ(figure_of(node)->name[0], 0) << "the node's menu names it";
}

TEST_F(Arcs, SayWhatIsKnownOfThem) {
  arc_ope(), click(110, 105, 1, 600), play(), click(304, 160, 1, 600), play();
  FigureRecord arc = all(FigureKind::arc).at(0);
  const std::tuple<double, const char*, const char*, std::string> cases[] = {
      {no_probability, "", "", ""},
      {0.25, "", "", "0.25"},
      {no_probability, "a", "", "a"},
      {no_probability, "", "back", "back"},
      {0.5, "batch", "out", "0.5 batch out"}};
  for (const auto& [probability, job_class, name, text] : cases) {
    arc.probability = probability;
    std::snprintf(arc.job_class, sizeof arc.job_class, "%s", job_class);
    std::snprintf(arc.name, sizeof arc.name, "%s", name);
    EXPECT_EQ(row_of(FigureKind::arc).label(arc).text, text);
  }
}

TEST_F(Arcs, LetGoOfAFigureThatIsCut) {
  arc_ope(), click(110, 105, 1, 600), play(), click(304, 160, 1, 600), play();
  cut_figure(figure_of(queue));
  const FigureRecord arc = all(FigureKind::arc).at(0);
  EXPECT_EQ(std::pair(arc.from.figure, arc.to.figure), std::pair(node, 0));
}

TEST_F(Arcs, ALeftToolLeavesNothing) {
  for (int (*const leave)() : {pointer_ope, exit_ope}) {
    node_ope(), leave();
    EXPECT_EQ(keep_diagram().size(), 2U);
    open_figure_menu(figure_of(node), 300, 300), leave();
    EXPECT_EQ(wd(figure_menu_id).kind, kind_free);
  }
}

TEST_F(Arcs, HoldOnAsFarAsThereAreCoordinates) {
  FigureRecord figure;
  figure.x1 = figure.y2 = 9;
  const Hold hold = {.figure = 1, .x_of = 1, .y_of = 2, .dx = -40'000, .dy = 40'000};
  const auto [x, y] = held_point(hold, figure);
  EXPECT_EQ(std::pair(x, y), std::pair(-32'768, 32'767));
}

// A node that has shrunk to nothing is not kept; what held on to it is.
TEST_F(Arcs, LetGoOfWhatDoesNotComeBack) {
  arc_ope(), click(110, 105, 1, 600), play(), click(304, 160, 1, 600), play();
  pointer_ope(), drag(100, 199, 100, 50), play();
  prepare_change(), figure_of(queue)->servers = 50, note_change();
  pointer_ope(), undo_ope();
  EXPECT_EQ(figure_of(node), nullptr);
  EXPECT_EQ(all(FigureKind::arc).at(0).from.figure, 0);
  undo_ope();
  EXPECT_EQ(all(FigureKind::arc).at(0).from.figure, node);
}

// What cannot be seen is no step back, and does not count as unsaved.
TEST_F(Arcs, NoChangeIsNoStep) {
  diagram_was_saved();
  for (const auto tool : {node_ope, vline_ope, arc_ope, text_ope})
    tool(), click(300, 90, 1, 600), play(), exit_ope();
  pointer_ope(), click(100, 150, 1, 600), play();  // grabs and lets go
  EXPECT_FALSE(diagram_is_unsaved());
  undo_ope();
  EXPECT_EQ(figure_of(queue), nullptr) << "what was drawn last is taken back";
}

}  // namespace
}  // namespace torve
