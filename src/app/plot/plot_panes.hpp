// The three plot panes: signals (.res) and spectra (.spe) drawn from their files.
//
// A pane is named by the row it starts at. Drawing one sets X1_min .. Y1_max to the pane's area
// and leaves them so, and leaves the text cursor and the font of the last label.
#pragma once

#include <cstdio>
#include <string>

#include "base/outcome.hpp"

namespace torve {

inline constexpr int pane_count = 3;
inline constexpr int pane_pitch = 176;             // rows from one pane to the next
inline constexpr int pane_rows = 170;              // rows that a caller clears before drawing
inline constexpr std::size_t pane_name_size = 30;  // bytes of a pane's name, terminator included

// State: the file last shown in each pane; written through set_pane_name.
extern char plot1name[pane_name_size];
extern char plot2name[pane_name_size];
extern char plot3name[pane_name_size];

/// The name of pane 0, 1 or 2.
[[nodiscard]] const char* pane_name(int pane);

/// Remembers a file for pane 0, 1 or 2, cut at 29 characters.
void set_pane_name(int pane, const std::string& name);

/// How a file is drawn into a pane.
struct PlotSettings {
  int colour = 0;         // colour number of the curve
  int frame_colour = 15;  // colour number behind the frame's numbers
  int target = 0;         // screen or EPS, as in draw_line
  int step = 1;           // samples summed into a point; each sample starts a point of its own
  int start = 0;          // > 0: lines skipped; < 0: the drawing moves right by -start * xsc
  double xsc = 1;         // pixels between points
  double ysc = 1;         // magnification; 1 lets the largest point reach the half height
  bool grid = true;
  int yoff = 0;           // the pane's first row
  bool decibels = false;  // a spectrum's points in decibels below the largest
};

/// Draws a time signal. Says "plot_curve largest absolute value is %f\n". Returns 0, or 1 after
/// "file too short\n" when there are fewer than `start` lines (nothing is drawn); without memory
/// no_memory() and 0.
int plot_curve(std::FILE* file, const PlotSettings& settings, const char* title);

/// Opens a file and draws it. Without such a file "Cannot find files" stands in the title line of
/// the area that was drawn last. Where there is no sample the frame alone is drawn, if that, and
/// the outcome is nothing_to_draw.
Outcome plot_signal_file(const std::string& path, const PlotSettings& settings);
Outcome plot_spectrum_file(const std::string& path, const PlotSettings& settings,
                           const std::string& samples);

/// The same into the pane at row `yoff`. Returns 0, or 1 when it cannot be opened:
/// then "Cannot find files" stands in the title line of the area that was drawn last.
int plot_anew(const char* path, int yoff, int start, int step, double xsc, double ysc, int target);
int plot_spectrum_anew(const char* path, int yoff, int start, int step, double xsc, double ysc,
                       int target, const char* samples);

/// Writes "Cannot find files" into the title line of the current drawing area.
void say_cannot_find_files();

// Not used by the workbench itself.

/// Draws a spectrum of at most `samples` bins ("all" or a decimal number). Says
/// "plot_spectrum K=%d\n" and "maxi=%d maxf1=%f offset=%d\n". Returns as plot_curve does, and 1
/// for an empty file.
int plot_spectrum(std::FILE* file, const PlotSettings& settings, const char* title,
                  const char* samples);

}  // namespace torve
