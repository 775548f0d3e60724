// The kinds of figures: a row each, from which drawing, mouse, files and menus take what they need.
//
// A figure is drawn as strokes between its two points, as a circle, a text or an arc. It keeps the
// pixels that it covers in slots; every stroke has a part of them of its own, so that each pixel
// is put back by the stroke that has covered it.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace torve {

struct FigureRecord;

enum class FigureKind {
  arrow = 1,
  node = 2,
  queue = 3,
  vline = 4,
  vbox = 5,
  tel = 6,
  label = 7,
  vcircle = 8,
  nodeb = 9,
  nodec = 10,
  arc = 11,
};

/// Where a figure stands.
struct FigurePlace {
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};

struct FigureAnchor {
  int x = 0, y = 0;
  bool operator==(const FigureAnchor&) const = default;
};

/// The middle between the points, halves cut off.
[[nodiscard]] constexpr FigureAnchor middle_of(const FigurePlace& place) {
  return {(place.x1 + place.x2) / 2, (place.y1 + place.y2) / 2};
}

/// What stands beside a figure, upper left corner, pixels.
struct FigureLabel {
  int x = 0, y = 0;
  std::string text;
};

/// What the coordinates of a stroke are counted from; the last two are the corners of an arrow's
/// head.
enum class FigurePoint { first, second, head_right, head_left };
inline constexpr std::size_t figure_point_count = 4;

struct StrokeEnd {
  FigurePoint x_of = FigurePoint::first;
  int dx = 0;
  FigurePoint y_of = FigurePoint::first;
  int dy = 0;
};

/// The slots of a stroke. In figures that are stretched the parts follow each other: they begin as
/// many figure's widths and heights further behind, and so much less is left.
struct StrokeSlots {
  std::size_t bytes = 0;   // from the first slot, four bytes a slot
  std::size_t budget = 0;  // slots that it may use
  std::size_t widths = 0, heights = 0;
};

/// Pixels at the ends that belong to a neighbour.
enum class StrokeEnds { both, without_first, without_last, without_both };

struct Stroke {
  StrokeEnd from, to;
  StrokeSlots slots;
  StrokeEnds ends = StrokeEnds::both;
};

/// Whether the two points of a figure stay in one column.
enum class Upright { no, yes, when_the_second_moves };

enum class DrawnAs { strokes, circle, text, arc };

/// Which property menu tells about the model that a figure stands for.
enum class FigureMenu { none, node, nodeb, vbox, vline, queue, tel, arc };
inline constexpr std::size_t figure_menu_count = 8;

struct FigureKindRow {
  FigureKind kind;
  const char* word;   // in files
  const char* title;  // for people
  Upright upright = Upright::no;
  int width = 0,
      height = 0;  // of kinds whose size is fixed, pixels; the width of a text is its own
  bool (*shows)(const FigurePlace& place);           // whether anything of it is to be seen
  FigureAnchor (*anchor)(const FigurePlace& place);  // what the distance of its label is kept to
  FigureLabel (*label)(const FigureRecord& figure) = nullptr;  // what its menu writes beside it
  FigureMenu menu = FigureMenu::none;
  DrawnAs drawn_as = DrawnAs::strokes;
  std::span<const Stroke> strokes = {};  // in the order in which they are erased
  bool has_head = false;                 // an arrow's
  bool holds = false;                    // arcs and texts hold on to it
  std::size_t held_slots = 1000;
};

[[nodiscard]] const FigureKindRow& row_of(FigureKind kind);

/// All of them, in the order of their numbers, which count from 1.
[[nodiscard]] std::span<const FigureKindRow> figure_kinds();

}  // namespace torve
