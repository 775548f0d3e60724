#include "diagram/figure_points.hpp"

#include <algorithm>

#include "diagram/figures.hpp"
#include "text/fonts.hpp"

namespace torve {

namespace {

constexpr int tel_width = 22;  // of the telephone, pixels
constexpr int tel_height = 14;
constexpr int label_height = 10;

bool is_upright(FigureKind kind) {
  return kind == FigureKind::node || kind == FigureKind::queue || kind == FigureKind::nodeb;
}

struct Size {
  int width = 0, height = 0;
};

// Of the kinds whose size is fixed; empty for the others.
Size fixed_size_of(const Vobj& figure) {
  if (figure.kind == FigureKind::tel) return {tel_width, tel_height};
  if (figure.kind == FigureKind::label) return {fntlen2(figure.text), label_height};
  return {};
}

}  // namespace

int set_x2_y2(Vobj* figure, int x, int y) {
  figure->x2 = x;
  figure->y2 = y;
  if (is_upright(figure->kind) || figure->kind == FigureKind::nodec) figure->x1 = x;
  const Size fixed = fixed_size_of(*figure);
  if (fixed.height != 0) {
    figure->x1 = x - fixed.width;
    figure->y1 = y - fixed.height;
  }
  return 0;
}

int set_x1_y1(Vobj* figure, int x, int y) {
  figure->x1 = x;
  figure->y1 = y;
  if (is_upright(figure->kind)) figure->x2 = x;
  const Size fixed = fixed_size_of(*figure);
  if (fixed.height != 0) {
    figure->x2 = x + fixed.width;
    figure->y2 = y + fixed.height;
  }
  return 0;
}

bool y1_ge_y2(const Vobj& figure) {
  return is_upright(figure.kind) || figure.kind == FigureKind::nodec ||
         figure.kind == FigureKind::tel || figure.kind == FigureKind::label;
}

void get_x3y3r(int x1, int y1, int x2, int y2, int* x3, int* y3) {
  if (x1 == x2 && y1 == y2) return;
  const ArrowHead head = arrow_head(x1, y1, x2, y2);
  *x3 = head.x_right;
  *y3 = head.y_right;
}

void get_x3y3l(int x1, int y1, int x2, int y2, int* x3, int* y3) {
  if (x1 == x2 && y1 == y2) return;
  const ArrowHead head = arrow_head(x1, y1, x2, y2);
  *x3 = head.x_left;
  *y3 = head.y_left;
}

FigureAnchor centre_of(const Vobj& figure) {
  return {(figure.x1 + figure.x2) / 2, (figure.y1 + figure.y2) / 2};
}

FigureAnchor anchor_of(const Vobj& figure) {
  if (figure.kind == FigureKind::vline) return centre_of(figure);
  if (figure.kind == FigureKind::vbox) {
    return {std::min(figure.x1, figure.x2), std::min(figure.y1, figure.y2)};
  }
  return {figure.x1, figure.y1};
}

void shift(Vobj* figure, int dx, int dy) {
  figure->x1 += dx;
  figure->x2 += dx;
  figure->y1 += dy;
  figure->y2 += dy;
}

}  // namespace torve
