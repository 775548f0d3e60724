#include "diagram/model/figure_kinds.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "diagram/model/arcs.hpp"
#include "diagram/model/figure_properties.hpp"
#include "diagram/model/figures.hpp"
#include "diagram/model/vobj.hpp"

namespace torve {

namespace {

using enum FigurePoint;
using enum StrokeEnds;

// --- strokes ------------------------------------------------------------------------------------

// A stroke of a pictogram, relative to the first point.
constexpr Stroke fixed(int x1, int y1, int x2, int y2, StrokeSlots slots, StrokeEnds ends = both) {
  return {{first, x1, first, y1}, {first, x2, first, y2}, slots, ends};
}

constexpr int head_height = 10;
constexpr Stroke lifeline = {{first, 0, first, head_height}, {first, 0, second, 0}, {240, 940}};

constexpr Stroke node_strokes[] = {
    fixed(-10, 0, 10, 0, {0, 1000}, without_last),
    fixed(-10, head_height, 10, head_height, {80, 980}, without_first),
    fixed(-10, 0, -10, head_height, {160, 960}, without_first),
    fixed(10, 0, 10, head_height, {200, 950}, without_last),
    lifeline,
};

constexpr Stroke nodeb_strokes[] = {
    fixed(0, 0, 10, 0, {0, 1000}, without_last),
    fixed(0, head_height, 10, head_height, {80, 980}, without_first),
    fixed(0, 0, 0, head_height, {160, 960}, without_first),
    fixed(10, 0, 10, head_height, {200, 950}, without_last),
    lifeline,
};

constexpr Stroke nodec_strokes[] = {
    fixed(-5, -1, -2, -1, {0, 1000}, without_last),
    fixed(-2, -1, -2, -10, {12, 997}),
    fixed(-2, -10, 1, -10, {52, 987}, without_both),
    fixed(1, -10, 2, -1, {60, 985}),
    fixed(2, -1, 8, -1, {108, 973}),
    fixed(8, -1, 9, -3, {136, 966}),
    fixed(9, -3, 10, -3, {148, 963}),
    fixed(10, -3, 10, 3, {156, 961}, without_first),
    fixed(9, 3, 10, 3, {180, 955}),
    fixed(8, 1, 9, 3, {188, 953}),
    fixed(2, 1, 8, 1, {200, 950}),
    fixed(1, 10, 2, 1, {228, 943}),
    fixed(-2, 10, 1, 10, {276, 931}, without_both),
    fixed(-2, 1, -2, 10, {284, 929}),
    fixed(-5, 1, -2, 1, {324, 919}, without_both),
    fixed(-5, 1, -5, -1, {332, 917}),
};

constexpr int tel_width = 22;
constexpr int tel_height = 14;
constexpr Stroke tel_strokes[] = {
    fixed(4, 0, 18, 0, {0, 1000}),     fixed(18, 0, 22, 4, {224, 986}),
    fixed(0, 4, 4, 0, {352, 978}),     fixed(6, 2, 16, 2, {480, 970}),
    fixed(2, 6, 6, 2, {640, 960}),     fixed(16, 2, 20, 6, {768, 952}),
    fixed(0, 4, 2, 6, {896, 944}),     fixed(20, 6, 22, 4, {960, 940}),
    fixed(0, 10, 6, 4, {1024, 936}),   fixed(6, 4, 16, 4, {1216, 924}),
    fixed(16, 4, 22, 10, {1376, 914}), fixed(22, 10, 22, 14, {1568, 902}),
    fixed(22, 14, 0, 14, {1632, 898}), fixed(0, 14, 0, 10, {1984, 876}),
};

constexpr int queue_left = -5;
constexpr Stroke queue_strokes[] = {
    {{first, queue_left, first, 0}, {first, 0, first, 0}, {0, 1000}, without_last},
    {{first, queue_left, second, 0}, {first, 0, second, 0}, {20, 995}, without_first},
    {{first, 0, first, 0}, {first, 0, second, 0}, {40, 990}, without_last},
    {{first, queue_left, first, 0},
     {first, queue_left, second, 0},
     {.bytes = 40, .budget = 990, .heights = 1},
     without_first},
};

constexpr Stroke vline_strokes[] = {{{first, 0, first, 0}, {second, 0, second, 0}, {0, 1000}}};

constexpr std::size_t vbox_held = 2800;
constexpr std::size_t vbox_budget = 3000;  // more than is held: what is cut is cut at 2800
constexpr Stroke vbox_strokes[] = {
    {{first, 0, first, 0}, {second, 0, first, 0}, {0, vbox_budget}, without_last},
    {{first, 0, first, 0},
     {first, 0, second, 0},
     {.budget = vbox_budget, .widths = 1},
     without_first},
    {{second, 0, first, 0},
     {second, 0, second, 0},
     {.budget = vbox_budget, .widths = 1, .heights = 1},
     without_last},
    {{first, 0, second, 0},
     {second, 0, second, 0},
     {.budget = vbox_budget, .widths = 1, .heights = 2},
     without_first},
};

constexpr Stroke arrow_strokes[] = {
    {{head_right, 0, head_right, 0}, {second, 0, second, 0}, {0, 1000}},
    {{head_left, 0, head_left, 0}, {second, 0, second, 0}, {80, 980}},
    {{first, 0, first, 0}, {second, 0, second, 0}, {160, 960}},
};

// --- what differs from kind to kind -------------------------------------------------------------

bool always(const FigurePlace&) {
  return true;
}

bool when_points_differ(const FigurePlace& place) {
  return place.x1 != place.x2 || place.y1 != place.y2;
}

bool when_rows_differ(const FigurePlace& place) {
  return place.y1 != place.y2;
}

FigureAnchor first_point(const FigurePlace& place) {
  return {place.x1, place.y1};
}

FigureAnchor upper_left(const FigurePlace& place) {
  return {std::min(place.x1, place.x2), std::min(place.y1, place.y2)};
}

FigureLabel name_above_head(const FigureRecord& node) {
  constexpr int left = 10;  // of the first point, pixels
  constexpr int above = 20;
  return {node.x1 - left, node.y1 - above, node.name};
}

FigureLabel name_above_box(const FigureRecord& box) {
  constexpr int above = 12;  // of the upper edge, pixels
  const FigureAnchor corner = upper_left(place_of(box));
  return {corner.x, corner.y - above, box.name};
}

FigureLabel servers_beside_middle(const FigureRecord& line) {
  constexpr int right = 4;  // of the middle, pixels
  constexpr int above = 14;
  const FigureAnchor centre = middle_of(place_of(line));
  return {centre.x + right, centre.y - above, std::to_string(line.servers)};
}

// What of an arc's probability, class and name there is.
FigureLabel names_beside_middle(const FigureRecord& arc) {
  constexpr int right = 4;  // of the middle of its middle piece, pixels
  constexpr int above = 14;
  std::string text;
  const auto append = [&text](const std::string& part) {
    if (!text.empty() && !part.empty()) text += ' ';
    text += part;
  };
  if (arc.probability != no_probability) append(shown_real(arc.probability));
  append(arc.job_class);
  append(arc.name);
  const FigureAnchor middle = middle_of_arc(arc);
  return {middle.x + right, middle.y - above, text};
}

// --- the rows -----------------------------------------------------------------------------------

constexpr int label_height = 10;

constexpr std::array<FigureKindRow, 11> rows = {{
    {.kind = FigureKind::arrow,
     .word = "arrow",
     .title = "Arrow",
     .shows = when_points_differ,
     .anchor = first_point,
     .strokes = arrow_strokes,
     .has_head = true},
    {.kind = FigureKind::node,
     .word = "node",
     .title = "Node",
     .upright = Upright::yes,
     .shows = when_rows_differ,
     .anchor = first_point,
     .label = name_above_head,
     .menu = FigureMenu::node,
     .strokes = node_strokes,
     .holds = true},
    {.kind = FigureKind::queue,
     .word = "queue",
     .title = "Queue",
     .upright = Upright::yes,
     .shows = when_rows_differ,
     .anchor = first_point,
     .menu = FigureMenu::queue,
     .strokes = queue_strokes,
     .holds = true},
    {.kind = FigureKind::vline,
     .word = "vline",
     .title = "Line",
     .shows = when_points_differ,
     .anchor = middle_of,
     .label = servers_beside_middle,
     .menu = FigureMenu::vline,
     .strokes = vline_strokes},
    {.kind = FigureKind::vbox,
     .word = "vbox",
     .title = "Box",
     .shows = when_points_differ,
     .anchor = upper_left,
     .label = name_above_box,
     .menu = FigureMenu::vbox,
     .strokes = vbox_strokes,
     .holds = true,
     .held_slots = vbox_held},
    {.kind = FigureKind::tel,
     .word = "tel",
     .title = "Telephone",
     .width = tel_width,
     .height = tel_height,
     .shows = when_points_differ,
     .anchor = first_point,
     .menu = FigureMenu::tel,
     .strokes = tel_strokes,
     .holds = true},
    {.kind = FigureKind::label,
     .word = "label",
     .title = "Text",
     .height = label_height,
     .shows = when_points_differ,
     .anchor = first_point,
     .drawn_as = DrawnAs::text},
    {.kind = FigureKind::vcircle,
     .word = "circle",
     .title = "Circle",
     .shows = always,
     .anchor = first_point,
     .drawn_as = DrawnAs::circle},
    {.kind = FigureKind::nodeb,
     .word = "nodeb",
     .title = "Node b",
     .upright = Upright::yes,
     .shows = when_rows_differ,
     .anchor = first_point,
     .label = name_above_head,
     .menu = FigureMenu::nodeb,
     .strokes = nodeb_strokes,
     .holds = true},
    {.kind = FigureKind::nodec,
     .word = "nodec",
     .title = "Node c",
     .upright = Upright::when_the_second_moves,
     .shows = when_rows_differ,
     .anchor = first_point,
     .label = name_above_head,
     .menu = FigureMenu::nodeb,
     .strokes = nodec_strokes,
     .holds = true},
    {.kind = FigureKind::arc,
     .word = "arc",
     .title = "Arc",
     .shows = when_points_differ,
     .anchor = middle_of,
     .label = names_beside_middle,
     .menu = FigureMenu::arc,
     .drawn_as = DrawnAs::arc,
     .held_slots = 40},  // of its head; the pieces take what they need
}};

// --- what the compiler checks -------------------------------------------------------------------

constexpr bool in_the_order_of_their_numbers() {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (static_cast<std::size_t>(rows[i].kind) != i + 1) return false;
  }
  return true;
}
static_assert(in_the_order_of_their_numbers());

struct SlotRange {
  std::size_t begin = 0, end = 0;
};

// The slots that a stroke would fill. A corner of a head is at most a head's length from its tip.
constexpr SlotRange slots_of(const Stroke& stroke, const FigurePlace& place) {
  constexpr int length = 10;
  const NamedPoints points = {{{place.x1, place.y1},
                               {place.x2, place.y2},
                               {place.x2 - length, place.y2 - length},
                               {place.x2 + length, place.y2 - length}}};
  const FigureSegment part = resolved(stroke, points);
  const VectorSegment& s = part.segment;
  const int dx = s.x2 > s.x1 ? s.x2 - s.x1 : s.x1 - s.x2;
  const int dy = s.y2 > s.y1 ? s.y2 - s.y1 : s.y1 - s.y2;
  const int pixels = std::max(dx, dy) + 1 - (s.without_first ? 1 : 0) - (s.without_last ? 1 : 0);
  return {part.first_slot, part.first_slot + static_cast<std::size_t>(std::max(pixels, 0))};
}

constexpr int none = -1;

// The first stroke of a kind that keeps a pixel in a slot of an earlier one.
constexpr int overlapping_stroke(const FigureKindRow& row, const FigurePlace& place) {
  for (std::size_t i = 0; i < row.strokes.size(); ++i) {
    const SlotRange later = slots_of(row.strokes[i], place);
    for (std::size_t j = 0; j < i; ++j) {
      const SlotRange earlier = slots_of(row.strokes[j], place);
      if (later.begin < earlier.end && earlier.begin < later.end) return static_cast<int>(i);
    }
  }
  return none;
}

constexpr std::size_t needed_slots(const FigureKindRow& row, const FigurePlace& place) {
  std::size_t needed = 0;
  for (const Stroke& stroke : row.strokes)
    needed = std::max(needed, slots_of(stroke, place).end);
  return needed;
}

// Whatever way a figure was stretched.
constexpr FigurePlace places[] = {
    {200, 200, 260, 225}, {200, 200, 190, 160}, {200, 200, 201, 201}, {200, 300, 500, 299}};

template <std::size_t i>
constexpr bool strokes_are_apart() {
  static_assert(overlapping_stroke(rows[i], places[0]) == none);
  static_assert(overlapping_stroke(rows[i], places[1]) == none);
  static_assert(overlapping_stroke(rows[i], places[2]) == none);
  static_assert(overlapping_stroke(rows[i], places[3]) == none);
  return true;
}
template <std::size_t... i>
constexpr bool all_strokes_are_apart(std::index_sequence<i...>) {
  return (strokes_are_apart<i>() && ...);
}
static_assert(all_strokes_are_apart(std::make_index_sequence<rows.size()>()));

// Nothing that fits into the diagram area, 680 columns and 599 rows, is cut but tall queues.
constexpr FigurePlace largest = {0, 0, 679, 598};
constexpr int tallest_queue = 495;
constexpr bool holds(const FigureKindRow& row) {
  FigurePlace place = largest;
  if (row.kind == FigureKind::queue) place.y2 = tallest_queue;
  return needed_slots(row, place) <= row.held_slots;
}
static_assert(std::all_of(rows.begin(), rows.end(), holds));

}  // namespace

const FigureKindRow& row_of(FigureKind kind) {
  return rows[static_cast<std::size_t>(kind) - 1];
}

std::span<const FigureKindRow> figure_kinds() {
  return rows;
}

}  // namespace torve
