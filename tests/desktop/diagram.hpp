// The diagram editor, used as a person does.
#pragma once

#include <string>

#include "desktop/tools.hpp"

namespace torve::desktop {

struct Point {
  int x, y;
};

/// Lines of the palette, and of the menu behind "Files".
enum class PaletteLine {
  pointer,
  node,
  node_b,
  node_c,
  queue,
  telephone,
  box,
  line,
  arrow,
  undo,
  files,
  leave
};
enum class FilesLine { save, read, print };
/// Lines of a picked figure's menu.
enum class FigureLine { cut, copy, color };

constexpr Tool palette = {0, 680, 0, 120};
constexpr Tool diagram_files = {0, 200, 0, 480};

class DiagramEditor : public Workbench {
 protected:
  /// A press of the right button on a free place.
  void open_palette(Point at);
  void choose(PaletteLine line);
  void choose(FilesLine line);
  /// Arms a tool and drags.
  void draw(PaletteLine tool, Point from, Point to);
  void drag(Point from, Point to);
  /// With the pointer tool: the property menu of the figure whose first point this is, the menu of
  /// the one whose middle it is.
  [[nodiscard]] Tool open_properties(Point head);
  void run_figure_line(Point middle, FigureLine line);
  /// Presses a menu's upper left box, which applies it.
  void apply(const Tool& menu);
  /// Colours a figure whose menu shows colour 0.
  void colour(Point middle, const std::string& number);

  /// Draws, names and colours the guide's network. With a palette, in an empty area.
  void draw_network();
};

/// Where the network's parts are.
constexpr Point cpu_head = {300, 140}, cpu_end = {300, 330};
constexpr Point disk_head = {500, 140}, disk_end = {500, 330};
constexpr Point way_back_from = {490, 270}, way_back_to = {310, 270};
constexpr Point frame_corner = {30, 70}, frame_end = {640, 420};

}  // namespace torve::desktop
