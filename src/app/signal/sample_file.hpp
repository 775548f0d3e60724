// Sample files (.res) and spectrum files (.spe): text, one "index value" line a sample.
//
// A reader takes the values in line order and ignores the index. Values are 32-bit floats. A
// spectrum file has one line more, the first: "size=" and the number of samples it was made from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/output_file.hpp"

namespace torve {

/// The most samples of a signal that any procedure takes.
inline constexpr int most_samples = 100000;

/// Line buffers, terminator included: longer lines count as several.
inline constexpr std::size_t pane_line_size = 180;
inline constexpr std::size_t analysis_line_size = 132;

/// Reads an open text file line by line from its current position, as fgets with a buffer of
/// `line_size` bytes would cut lines. It reads ahead, so the file is the reader's from then on; it
/// does not close it. A read error counts as the end of the file.
class SampleReader {
 public:
  SampleReader(std::FILE* file, std::size_t line_size);

  /// Skips one line; false at the end of the file.
  [[nodiscard]] bool skip_line();

  /// The next line as fgets would give it (with its newline, cut at line_size - 1, and at a zero
  /// byte), valid until the next call; nullopt at the end of the file.
  [[nodiscard]] std::optional<std::string_view> next_line();

  /// Reads values as "%d %f" would until `values` is full or the file ends; returns how many. A
  /// line that holds no value repeats the previous one (before the first: 0).
  std::size_t read(std::span<float> values);

 private:
  /// Makes whole lines available at begin_; false at the end of the file.
  bool refill();
  [[nodiscard]] std::size_t line_length() const;
  /// The value of the next line by the short way, if that applies and the line is moved past.
  bool take_plain_value();
  void take_any_value();

  std::FILE* file_;
  std::size_t longest_line_;
  std::unique_ptr<char[]> buffer_;
  char* begin_;  // the bytes not yet taken are begin_ .. end_ - 1, a zero byte follows
  char* end_;
  bool at_end_ = false;
  float value_ = 0;
};

/// The part of a file that is taken: samples first .. end - 1, counted from 0.
struct SampleRange {
  int first = 0;
  int end = std::numeric_limits<int>::max();
};

/// Reads the values of an open file that lie in a range, however many, piece by piece.
class LongSampleReader {
 public:
  LongSampleReader(std::FILE* file, const SampleRange& range);
  /// As SampleReader::read.
  std::size_t read(std::span<float> values);

 private:
  SampleReader reader_;
  std::int64_t left_;
};

/// The values of the open file that lie in `range`, at most `limit`, read with analysis_line_size.
[[nodiscard]] std::vector<float> read_samples(std::FILE* file, int limit,
                                              const SampleRange& range = {});

/// The same of the sample file `name`. Nothing if it cannot be opened as a regular file.
[[nodiscard]] std::optional<std::vector<float>> read_sample_file(const std::string& name,
                                                                 int limit = most_samples,
                                                                 const SampleRange& range = {});

/// All values of the sample file `name` that lie in `range`, however many. Nothing if it cannot be
/// opened as a regular file; std::bad_alloc is the caller's.
[[nodiscard]] std::optional<std::vector<float>> read_long_sample_file(
    const std::string& name, const SampleRange& range = {});

/// Tells how much of an open regular file has been read (base/progress.hpp).
void tell_read(std::FILE* file);

/// A sample budget: "all" is most_samples, otherwise the decimal number, within 0 .. most_samples;
/// no number is 0.
[[nodiscard]] int sample_budget(const std::string& text);

/// The K of a spectrum file's first line "size=K"; nothing if the line does not begin so.
[[nodiscard]] std::optional<int> spectrum_size(std::string_view header_line);

/// Writes the line "%d %f\n".
void write_sample(OutputFile& file, std::int64_t index, double value);

/// Writes the line "%d %d\n".
void write_integer_sample(OutputFile& file, std::int64_t index, int value);

/// Writes the lines of a sample file, index 0 and up.
void write_samples(OutputFile& file, std::span<const float> values);

/// Writes a spectrum file: the header line with `size`, then the bins.
void write_spectrum(OutputFile& file, int size, std::span<const float> bins);

}  // namespace torve
