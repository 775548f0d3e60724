#include "diagram/construction.hpp"

#include "diagram/editor.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/model/figures.hpp"

namespace torve {

namespace {

constexpr int label_placed_mode = 7;  // vobjmode after label_ope
constexpr int free_label_x = 100;
constexpr int free_label_y = 200;

// A figure that is drawn when its points are set.
template <typename Set>
Vobj* make(FigureKind kind, Set set) {
  prepare_change();
  Vobj* figure = create_vector_obj(kind);
  if (figure == nullptr) return nullptr;
  const FigureChange drawn_at_the_end(figure);
  set(figure);
  figure->phase = phase_draw;
  return figure;
}

int put(FigureKind kind, const FigurePlace& place) {
  make(kind, [&place](Vobj* figure) {
    figure->x1 = place.x1;
    figure->y1 = place.y1;
    figure->x2 = place.x2;
    figure->y2 = place.y2;
  });
  return 0;
}

}  // namespace

int put_hline(int x, int y, int length) {
  return put(FigureKind::vline, {x, y, x + length, y});
}

int put_vline(int x, int y, int length) {
  return put(FigureKind::vline, {x, y, x, y + length});
}

int put_arrow(int x1, int y1, int x2, int y2) {
  return put(FigureKind::arrow, {x1, y1, x2, y2});
}

int put_circle(int x, int y, int size) {
  return put(FigureKind::vcircle, {x, y, x + size, y + size});
}

int textx(const GlyphBlock&, const AdvanceTable&, const char* text, int x, int y) {
  const Vobj* label = make(FigureKind::label, [=](Vobj* figure) {
    figure->x1 = x;
    figure->y1 = y;
    set_label_text(figure, text);
  });
  return label != nullptr ? label->x2 - label->x1 : 0;
}

int label_ope(const char* text) {
  if (vobjmode == label_placed_mode) return 0;
  exit_ope();
  textx(chlist2, chdist2, text, free_label_x, free_label_y);
  vobjmode = label_placed_mode;
  return 0;
}

}  // namespace torve
