// What a figure for a paper shall show: as a value, and as the words that torve-figure is given.
//
// torve-figure is a program of its own because the library that draws the figures brings 19
// others along: the window and torve-batch start without them. It writes the picture to standard
// output and changes no file.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace torve {

enum class FigureFormat { pdf, svg, png };

/// The format that a name ends in, in upper or lower case; nothing for any other ending.
[[nodiscard]] std::optional<FigureFormat> figure_format_of(std::string_view name);

/// The format "pdf", "svg" or "png"; nothing for any other word.
[[nodiscard]] std::optional<FigureFormat> figure_format_named(std::string_view word);

enum class FigureSource { signal, spectrum, diagram };

/// What a file holds as its name ends: .spe a spectrum, .vob a diagram, anything else a signal.
[[nodiscard]] FigureSource figure_source_of(std::string_view name);

/// What an axis can be told apart by.
inline constexpr double least_xsc = 1e-9;
inline constexpr double most_xsc = 1e6;
inline constexpr double least_scale = 1e-30;
inline constexpr double most_scale = 1e30;

/// An input and what is shown of it. The numbers mean what they mean for a pane, whose curve is 763
/// pixels wide; a diagram uses none of them. Scales are 1e-30 .. 1e30.
struct FigureInput {
  std::string name = {};
  FigureSource source = FigureSource::signal;
  double start = 0;                 // > 0: samples skipped; < 0: drawn so many samples later
  std::optional<double> from = {};  // the sample at the left end, drawn where it is; none: `start`
  int step = 1;                     // samples summed into a point; each starts a point of its own
  std::optional<double> xsc = {};   // pixels between points; none: to the end of the file
  std::optional<double> ysc = {};   // 1: the full scale reaches the edge; none: as it fits
  std::optional<double> full = {};  // the full scale; none: the largest point
  std::optional<double> samples = {};  // most samples taken from `start` on; none: all
  bool decibels = false;               // a spectrum below its largest bin
};

/// "NAME[,start=N][,from=N][,step=N][,xsc=X][,ysc=X][,full=X][,samples=N][,db]". Nothing if a
/// number is none or out of range, or decibels are asked for of anything but a spectrum.
[[nodiscard]] std::optional<FigureInput> figure_input_of(std::string_view word);

/// The word for an input; what is not said is as it is by default.
[[nodiscard]] std::string figure_word(const FigureInput& input);

struct FigureSize {
  int width = 0, height = 0;  // points of 1/72 inch; of a PNG pixels
  bool operator==(const FigureSize&) const = default;
};

inline constexpr std::size_t most_figure_inputs = 4;
inline constexpr int most_figure_size = 5000;
/// Pixels of a PNG for a point.
inline constexpr double png_scale = 2.5;

/// "WxH"; nothing for other words.
[[nodiscard]] std::optional<FigureSize> figure_size_of(std::string_view word);

struct FigureRequest {
  FigureFormat format = FigureFormat::pdf;
  std::optional<FigureSize> size = {};  // none: as large as the inputs need
  std::string title = {};               // above all; may be empty
  std::vector<FigureInput> inputs = {};
};

/// Whether a figure of that size has room for its inputs, and is not larger than any may be.
[[nodiscard]] bool figure_size_fits(const FigureRequest& request);

/// The words for torve-figure, its name not among them.
[[nodiscard]] std::vector<std::string> figure_arguments(const FigureRequest& request);

/// What they ask for; nothing if they are not such words.
[[nodiscard]] std::optional<FigureRequest> figure_request_of(std::span<const std::string> words);

}  // namespace torve
