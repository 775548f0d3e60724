// The tools of the icon bar, used as a person does.
#pragma once

#include <string>
#include <vector>

#include "desktop/harness.hpp"

namespace torve::desktop {

/// A tool's icon, counted from the left, and where its menu opens.
struct Tool {
  int icon;
  int x, y, width;
};
constexpr Tool plot_tool = {1, 400, 520, 392};
constexpr Tool print_tool = {2, 400, 520, 320};
constexpr Tool read_tool = {3, 240, 520, 496};
constexpr Tool write_tool = {4, 400, 529, 384};
constexpr Tool correlate_tool = {5, 256, 520, 536};
constexpr Tool spectrum_tool = {6, 320, 520, 456};
constexpr int menu_height = 68;

/// The i-th pane, as far as menus do not reach into it where they open.
constexpr Area pane_area(int i) {
  return {0, 176 * i, 800, 168};
}

class Workbench : public Desktop {
 protected:
  /// Whatever a session does, nothing is to be said on standard error.
  void TearDown() override { EXPECT_EQ(errors(), ""); }

  void open(const Tool& tool);
  /// Runs a line: a press on its text, dragged to the right.
  void run(const Tool& tool, int line);
  /// Runs a line: two presses on its text.
  void run_by_double_press(const Tool& tool, int line);
  /// Types over the field that begins at a column of a line.
  void edit(const Tool& tool, int line, int column, const std::string& text);
  /// Presses a menu's close box.
  void close(const Tool& tool);
  /// Moves the menu by the box in its upper left corner; returns the tool with its new place.
  [[nodiscard]] Tool move(const Tool& tool, int to_x, int to_y);

  /// Whether a menu's line shows this text from a column on.
  [[nodiscard]] bool shows(const Tool& tool, int line, int column, const std::string& text);
  /// Whether the pane's title is this.
  [[nodiscard]] bool pane_shows(int pane, const std::string& title);

  /// Writes a sample file.
  void write_signal(const std::string& name, const std::vector<double>& values);
  /// The values of a sample file, or the bins of a spectrum file.
  [[nodiscard]] std::vector<double> read_signal(const std::string& name) const;
  [[nodiscard]] std::string read_file(const std::string& name) const;
};

}  // namespace torve::desktop
