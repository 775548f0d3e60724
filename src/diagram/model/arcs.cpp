#include "diagram/model/arcs.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace torve {

namespace {

constexpr std::size_t slots_of_a_head_stroke = 20;
constexpr std::size_t slots_of_a_piece = 1000;  // what is longer is cut, as lines are
constexpr int farthest = 32767;                 // coordinate

std::vector<FigureAnchor> points_between(const FigureRecord& arc, const FigurePlace& place) {
  std::vector<FigureAnchor> points;
  points.reserve(arc.bends.size() + 2);
  points.push_back({place.x1, place.y1});
  points.insert(points.end(), arc.bends.begin(), arc.bends.end());
  points.push_back({place.x2, place.y2});
  return points;
}

// The pieces that show, each with slots behind those of the one before.
std::vector<FigureSegment> pieces_of(const std::vector<FigureAnchor>& points) {
  std::vector<FigureSegment> pieces;
  std::size_t slot = 2 * slots_of_a_head_stroke;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const FigureAnchor from = points[i - 1], to = points[i];
    if (from == to) continue;
    const int longest = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
    const std::size_t slots = std::min(static_cast<std::size_t>(longest) + 1, slots_of_a_piece);
    pieces.push_back({{.x1 = from.x, .y1 = from.y, .x2 = to.x, .y2 = to.y}, slot, slots});
    slot += slots;
  }
  return pieces;
}

double distance_to(const VectorSegment& segment, int x, int y) {
  const double dx = segment.x2 - segment.x1, dy = segment.y2 - segment.y1;
  const double px = x - segment.x1, py = y - segment.y1;
  const double length = dx * dx + dy * dy;
  const double share = length > 0 ? std::clamp((px * dx + py * dy) / length, 0.0, 1.0) : 0;
  return std::hypot(px - share * dx, py - share * dy);
}

// Most figures are far away, whatever they look like.
bool may_be_near(const FigureRecord& figure, int x, int y) {
  constexpr int reach = hold_reach + 30;  // pictograms go beyond their points
  return std::min(figure.x1, figure.x2) - reach < x && x < std::max(figure.x1, figure.x2) + reach &&
         std::min(figure.y1, figure.y2) - reach < y && y < std::max(figure.y1, figure.y2) + reach;
}

int clamped(int coordinate) {
  return std::clamp(coordinate, -farthest - 1, farthest);
}

void follow(Hold& hold, const FigureRecord* figure, int& x, int& y) {
  if (hold.figure == 0) return;
  if (figure == nullptr) {
    hold = {};
    return;
  }
  const FigureAnchor point = held_point(hold, *figure);
  x = point.x;
  y = point.y;
}

}  // namespace

std::vector<FigureAnchor> points_of_arc(const FigureRecord& arc) {
  return points_between(arc, place_of(arc));
}

FigureAnchor middle_of_arc(const FigureRecord& arc) {
  const std::vector<FigureAnchor> points = points_of_arc(arc);
  const std::size_t piece = (points.size() - 2) / 2;
  const FigureAnchor from = points[piece], to = points[piece + 1];
  return middle_of({from.x, from.y, to.x, to.y});
}

std::vector<FigureSegment> arc_segments(const FigureRecord& arc, const FigurePlace& place) {
  std::vector<FigureSegment> segments;
  std::vector<FigureSegment> pieces = pieces_of(points_between(arc, place));
  if (pieces.empty()) return segments;
  const VectorSegment& last = pieces.back().segment;
  const ArrowHead head = arrow_head(last.x1, last.y1, last.x2, last.y2);
  const auto head_stroke = [&last](int x, int y, std::size_t slot) {
    return FigureSegment{
        {.x1 = x, .y1 = y, .x2 = last.x2, .y2 = last.y2}, slot, slots_of_a_head_stroke};
  };
  segments.push_back(head_stroke(head.x_right, head.y_right, 0));
  segments.push_back(head_stroke(head.x_left, head.y_left, slots_of_a_head_stroke));
  segments.insert(segments.end(), pieces.rbegin(), pieces.rend());
  return segments;
}

std::vector<FigureSegment> segments_of(const FigureRecord& figure) {
  return figure.kind == FigureKind::arc ? arc_segments(figure, place_of(figure))
                                        : figure_segments(figure.kind, place_of(figure));
}

double ink_distance(const FigureRecord& figure, int x, int y) {
  double least = std::numeric_limits<double>::infinity();
  for (const FigureSegment& part : segments_of(figure))
    least = std::min(least, distance_to(part.segment, x, y));
  return least;
}

const Vobj* figure_to_hold(int x, int y) {
  const Vobj* nearest = nullptr;
  double least = hold_reach;
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (!row_of(figure->kind).holds || figure->phase == 0 || !may_be_near(*figure, x, y)) continue;
    const double distance = ink_distance(*figure, x, y);
    if (distance > least) continue;
    least = distance;
    nearest = figure;
  }
  return nearest;
}

Hold hold_on(const FigureRecord* figure, int x, int y) {
  if (figure == nullptr) return {};
  Hold hold = {.figure = figure->serial};
  hold.x_of = std::abs(x - figure->x2) < std::abs(x - figure->x1) ? 2 : 1;
  hold.y_of = std::abs(y - figure->y2) < std::abs(y - figure->y1) ? 2 : 1;
  hold.dx = x - (hold.x_of == 2 ? figure->x2 : figure->x1);
  hold.dy = y - (hold.y_of == 2 ? figure->y2 : figure->y1);
  return hold;
}

FigureAnchor held_point(const Hold& hold, const FigureRecord& figure) {
  return {clamped((hold.x_of == 2 ? figure.x2 : figure.x1) + hold.dx),
          clamped((hold.y_of == 2 ? figure.y2 : figure.y1) + hold.dy)};
}

void follow_holds(FigureRecord& follower,
                  const std::function<const FigureRecord*(int serial)>& figure_with) {
  const FigureAnchor before = {follower.x1, follower.y1};
  const auto held = [&figure_with](const Hold& hold) {
    return hold.figure != 0 ? figure_with(hold.figure) : nullptr;
  };
  follow(follower.from, held(follower.from), follower.x1, follower.y1);
  if (follower.kind == FigureKind::label) {
    follower.x2 += follower.x1 - before.x;
    follower.y2 += follower.y1 - before.y;
  }
  follow(follower.to, held(follower.to), follower.x2, follower.y2);
}

void follow_holds(Vobj& follower) {
  follow_holds(follower, [](int serial) -> const FigureRecord* { return figure_of(serial); });
}

std::vector<Vobj*> followers_of(const Vobj& figure) {
  std::vector<Vobj*> followers;
  if (!row_of(figure.kind).holds) return followers;
  for (Vobj* other = firstvobj; other != nullptr; other = other->next) {
    if (other->from.figure == figure.serial || other->to.figure == figure.serial)
      followers.push_back(other);
  }
  return followers;
}

}  // namespace torve
