// Figures come and go without a trace: random diagrams against a painter that knows only the base
// picture and the list.

#include <random>

#include "diagram/construction.hpp"
#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/figure_painter.hpp"
#include "diagram/history.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

class FiguresTest : public ScreenTest {
 protected:
  FiguresTest() {
    EXPECT_EQ(init_font2(6), 0);
    xxmin = yymin = 0;
    xxmax = 680;
    yymax = 599;
  }
  ~FiguresTest() override {
    free_vector_objects(VectorMode::clipped);
    free_font2();
  }

  int any(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  std::uint32_t any_colour() { return static_cast<std::uint32_t>(any(0, 0xFFFFFF)); }

  void paint_base() {
    for (int i = 0; i < 80; ++i) {
      const int x = any(-50, 790), y = any(-50, 590);
      clear_win1(x, y, x + any(1, 200), y + any(1, 200), any_colour());
    }
    base_ = all_pixels();
  }

  // Most figures lie on the canvas, some across its edges; none is so large that it is cut.
  int coordinate(int limit) {
    const int where = any(0, 9);
    return where < 2 ? any(-30, 30) : where == 2 ? any(limit - 30, limit + 30) : any(0, limit);
  }

  FigurePlace any_place(FigureKind kind) {
    FigurePlace place = {coordinate(680), coordinate(600), coordinate(680), coordinate(600)};
    if (any(0, 1) == 0) place.x2 = place.x1 + any(-60, 60), place.y2 = place.y1 + any(-60, 60);
    if (any(0, 9) == 0) place.y2 = place.y1;
    if (any(0, 1) == 0) place.x2 = place.x1;  // upright, as the editor makes nodes
    if (kind == FigureKind::label) place.x2 = place.x1 + 60, place.y2 = place.y1 + 10;
    return place;
  }

  static void put_at(Vobj* figure, const FigurePlace& place) {
    const FigureChange redrawn(figure);
    figure->x1 = place.x1, figure->y1 = place.y1, figure->x2 = place.x2, figure->y2 = place.y2;
    figure->phase |= phase_draw;
  }

  Vobj* any_figure() {
    Vobj* figure = firstvobj;
    for (int i = any(0, 15); i > 0 && figure != nullptr && figure->next != nullptr; --i)
      figure = figure->next;
    return figure;
  }

  // One thing a user does: something new, away with it, elsewhere in another colour.
  void step() {
    Vobj* figure = any_figure();
    const int what = any(0, 7);
    if (figure != nullptr && what == 0) return cut_figure(figure);
    if (figure == nullptr || what < 3) {
      figure = create_vector_obj(static_cast<FigureKind>(any(1, 10)));
      std::snprintf(figure->text, sizeof figure->text, "Net %d queue", any(0, 999));
    }
    figure->colour = any_colour();
    put_at(figure, any_place(figure->kind));
    EXPECT_TRUE(cvobj == figure && figure == lastvobj);
  }

  std::mt19937 random_;
  Pixels base_;
};

TEST_F(FiguresTest, RandomDiagramsLeaveNoTrace) {
  for (unsigned seed = 1; seed <= asked("TORVE_SEEDS", 6); ++seed) {
    random_.seed(seed);
    paint_base();
    if (seed == 2)
      std::fill_n(chdist2.get(), advance_classes * advance_classes, 3);  // letters meet
    for (int i = 0; i < 40; ++i) {
      step();
      ASSERT_TRUE(all_pixels() == with_figures(base_)) << "seed " << seed << " step " << i;
      if (i % 20 != 19) continue;
      lift_figures();
      ASSERT_TRUE(all_pixels() == base_) << "seed " << seed << " step " << i << ", lifted";
      lay_figures();
    }
    free_vector_objects(VectorMode::clipped);
    ASSERT_TRUE(all_pixels() == base_) << "seed " << seed;
    ASSERT_EQ(lastvobj, nullptr);
  }
}

TEST_F(FiguresTest, WhatWasClippedIsNotPutBack) {
  paint_base();
  Vobj* line = create_vector_obj(FigureKind::vline);
  xxmax = 300;
  put_at(line, {100, 100, 500, 180});
  xxmax = 680;
  draw_vobj(VectorMode::clipped, line, figure_erase);
  EXPECT_TRUE(all_pixels() == base_);
}

// A figure has room for so many pixels of each stroke; what is cut leaves no trace, either.
TEST_F(FiguresTest, AreCutWhereTheirRoomEnds) {
  using enum FigureKind;
  const struct {
    FigureKind kind;
    FigurePlace place;
    int x, y, cut_x, cut_y;
  } cases[] = {
      {vline, {-500, 100, 900, 100}, 499, 100, 500, 100},
      {arrow, {-500, 100, 900, 100}, 459, 100, 460, 100},
      {node, {300, -400, 300, 700}, 300, 549, 300, 550},
      {queue, {300, -450, 300, 560}, 300, 539, 300, 540},
      {queue, {300, 100, 300, 596}, 295, 594, 295, 595},
      {vbox, {-900, 100, 600, 300}, 600, 299, 300, 300},
      {vbox, {-700, 100, 600, 300}, 400, 300, 401, 300},
  };
  paint_base();
  for (const auto& [kind, place, x, y, cut_x, cut_y] : cases) {
    Vobj* figure = create_vector_obj(kind);
    figure->colour = 0x123456;
    put_at(figure, place);
    EXPECT_EQ(getpixel2c(x, y), 0x123456U) << static_cast<int>(kind) << " at " << x;
    EXPECT_NE(getpixel2c(cut_x, cut_y), 0x123456U) << static_cast<int>(kind) << " at " << cut_x;
    free_vector_objects(VectorMode::clipped);
    EXPECT_TRUE(all_pixels() == base_);
  }
}

TEST_F(FiguresTest, ProgramsMakeThemAtOnce) {
  const struct {
    int (*make)();
    FigureKind kind;
    FigurePlace place;
  } cases[] = {
      {[] { return put_hline(10, 20, 30); }, FigureKind::vline, {10, 20, 40, 20}},
      {[] { return put_vline(10, 20, 30); }, FigureKind::vline, {10, 20, 10, 50}},
      {[] { return put_arrow(90, 80, 60, 20); }, FigureKind::arrow, {90, 80, 60, 20}},
      {[] { return put_circle(200, 100, 50); }, FigureKind::vcircle, {200, 100, 250, 150}},
      {[] { return textx(chlist2, chdist2, "net", 300, 40) - fntlen2("net"); },
       FigureKind::label,
       {300, 40, 300 + fntlen2("net"), 50}},
      {[] { return label_ope("free") + label_ope("once"); },
       FigureKind::label,
       {100, 200, 100 + fntlen2("free"), 210}},
  };
  paint_base();
  for (const auto& [make, kind, place] : cases) {
    EXPECT_EQ(make(), 0);
    ASSERT_NE(lastvobj, nullptr);
    EXPECT_EQ(std::tuple(lastvobj->kind, lastvobj->x1, lastvobj->y1, lastvobj->x2, lastvobj->y2),
              std::tuple(kind, place.x1, place.y1, place.x2, place.y2));
    EXPECT_TRUE(all_pixels() == with_figures(base_)) << static_cast<int>(kind);
  }
  EXPECT_EQ(vobjmode, 7);
  vobjmode = mode_idle;
  nodec_ope();
  EXPECT_EQ(cvobj->x2 - cvobj->x1, 10) << "before it is placed, too";
  exit_ope();
  reset_history();
}

// Of an arrow that goes up, and of one without a way.
TEST_F(FiguresTest, ArrowHeadsHaveTwoCorners) {
  int right[] = {-1, -1}, left[] = {-1, -1};
  for (const int tip : {20, 100}) {
    get_x3y3r(50, 100, 50, tip, &right[0], &right[1]);
    get_x3y3l(50, 100, 50, tip, &left[0], &left[1]);
    EXPECT_EQ(std::tuple(right[0], right[1], left[0], left[1]), std::tuple(44, 28, 55, 28));
  }
}

}  // namespace
}  // namespace torve
