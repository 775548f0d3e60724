// A drawing as a value: lines, circles and texts on a white page, whatever it is written as.
//
// Positions and lengths are points (1/72 inch), x to the right, y down. Texts are UTF-8 without
// control characters. Items lie above those before them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace torve {

struct Point {
  double x = 0, y = 0;
};

struct Box {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  [[nodiscard]] double width() const { return x2 - x1; }
  [[nodiscard]] double height() const { return y2 - y1; }
};

struct Ink {
  std::uint32_t colour = 0;  // 0xRRGGBB
  double width = 0.5;
};

struct Line {
  Point from, to;
};

/// Lines with round ends: one without a length is a dot.
struct Lines {
  Ink ink;
  std::vector<Line> lines;
};

/// A line through points, of which no more is seen than lies in `clip`.
struct Curve {
  Ink ink;
  std::vector<Point> points;
  Box clip;
};

struct Circle {
  Ink ink;
  Point centre;
  double radius = 0;
};

enum class Anchor { left, middle, right };

struct Text {
  Point at;  // on the base line: the left end, the middle or the right end
  std::string text;
  double size = 8;
  Anchor anchor = Anchor::left;
  bool upward = false;      // read from below, turned about `at`
  std::string raised = {};  // smaller and higher behind the text; anchored left alone
  std::uint32_t colour = 0;
};

/// What is raised is so much higher and so large, in parts of the text's size.
inline constexpr double raise = 0.4;
inline constexpr double raised_size = 0.7;

using Item = std::variant<Lines, Curve, Circle, Text>;

struct Drawing {
  double width = 0, height = 0;
  std::string title;
  std::vector<Item> items;
};

/// How wide a text can become, whatever sans-serif font it is set in.
[[nodiscard]] double widest(std::string_view text, double size);

/// The text set smaller, and at last cut, so that it is at most `room` wide.
[[nodiscard]] Text fitted(Text text, double room);

/// Any bytes as a text: as UTF-8 where they are, else as Latin-1. Control characters become blanks.
[[nodiscard]] std::string text_of_bytes(std::string_view bytes);

}  // namespace torve
