#include "diagram/figure_points.hpp"

#include "diagram/model/arcs.hpp"
#include "text/fonts.hpp"

namespace torve {

namespace {

bool has_fixed_size(const FigureKindRow& row) {
  return row.height != 0;
}

int width_of(const Vobj& figure) {
  const FigureKindRow& row = row_of(figure.kind);
  return row.drawn_as == DrawnAs::text ? fntlen2(figure.text) : row.width;
}

}  // namespace

int set_x2_y2(Vobj* figure, int x, int y) {
  const FigureKindRow& row = row_of(figure->kind);
  figure->x2 = x;
  figure->y2 = y;
  if (row.upright != Upright::no) figure->x1 = x;
  if (has_fixed_size(row)) {
    figure->x1 = x - width_of(*figure);
    figure->y1 = y - row.height;
  }
  return 0;
}

int set_x1_y1(Vobj* figure, int x, int y) {
  const FigureKindRow& row = row_of(figure->kind);
  figure->x1 = x;
  figure->y1 = y;
  if (row.upright == Upright::yes) figure->x2 = x;
  if (has_fixed_size(row)) {
    figure->x2 = x + width_of(*figure);
    figure->y2 = y + row.height;
  }
  return 0;
}

bool y1_ge_y2(const Vobj& figure) {
  const FigureKindRow& row = row_of(figure.kind);
  return row.upright != Upright::no || has_fixed_size(row);
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
  return figure.kind == FigureKind::arc ? middle_of_arc(figure) : middle_of(place_of(figure));
}

FigureAnchor anchor_of(const Vobj& figure) {
  return figure.kind == FigureKind::arc ? middle_of_arc(figure)
                                        : row_of(figure.kind).anchor(place_of(figure));
}

void shift(Vobj* figure, int dx, int dy) {
  figure->x1 += dx;
  figure->x2 += dx;
  figure->y1 += dy;
  figure->y2 += dy;
  for (FigureAnchor& bend : figure->bends) {
    bend.x += dx;
    bend.y += dy;
  }
}

}  // namespace torve
