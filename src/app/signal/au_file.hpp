// AU sound files, little-endian: 32-bit float files out of sample files, and cuts the other way.
//
//   offset  size
//        0     4  magic "dns."
//        4     4  header length L, signed: the samples start there
//        8     4  data size, FF FF FF 00: not known
//       12     4  encoding, signed: 3 16-bit integers, 6 binary32, -6 two binary16 in a word
//       16     4  sampling rate (files are written with, and always taken as, 44100)
//       20     4  channels
//       24    20  annotation
//       44    24  summary: minimum, maximum and effective value, twice
//       68        padding up to L
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/outcome.hpp"

namespace torve {

inline constexpr std::string_view au_magic = "dns.";
inline constexpr std::string_view au_annotation = "AudacityBlockFile112";
inline constexpr int au_fixed_part = 68;
inline constexpr int au_header_length = 3128;

enum AuEncoding : std::int32_t { au_halves = -6, au_int16 = 3, au_float = 6 };

/// The little-endian word at the front of `bytes`.
[[nodiscard]] std::int32_t au_word(std::span<const std::uint8_t, 4> bytes);
[[nodiscard]] std::int16_t au_half_word(std::span<const std::uint8_t, 2> bytes);

/// Reads as many bytes as `bytes` holds; false if the file ends before.
[[nodiscard]] bool read_bytes(std::FILE* file, std::span<std::uint8_t> bytes);

/// The header of the files that make_au_file writes, au_header_length bytes.
[[nodiscard]] std::vector<std::uint8_t> au_header();

/// What the header of an AU file says.
struct AuFormat {
  std::int64_t length;  // of the header, bytes
  std::int32_t encoding;
  std::int32_t sampling_rate;  // a second
  std::int32_t channels;
};

/// That of the file `name`; nothing if it is no AU file.
[[nodiscard]] std::optional<AuFormat> au_format(const std::string& name);

/// What is to be said of the file `name` before it is taken for an AU file, to be put behind that
/// name: that it is not mono, 44,100 Hz, 32-bit floating point, or big-endian. Empty for nothing.
[[nodiscard]] std::string au_remark(const std::string& name);

/// Writes the sample file `res_name` as a 32-bit float AU file. Without such a sample file the AU
/// file holds the header alone and what was there is kept. If both are one file, nothing is
/// touched: the AU file counts as one that cannot be created.
Outcome convert_to_au(const std::string& res_name, const std::string& au_name);

/// The same; 0, or 1 if it is not done.
int make_au_file(const std::string& res_name, const std::string& au_name);

/// Writes the samples of an AU file from `start_seconds` to `end_seconds`, both included, as
/// a sample file. Not done if a file cannot be opened or the input is no AU file. The output is
/// created before the input is looked at: a refused input leaves it empty, and one name for both
/// EMPTIES the AU file. What was there is kept.
Outcome cut_au(const std::string& au_name, const std::string& res_name, double start_seconds,
               double end_seconds);

/// The same; 0, or 1 if it is not done.
int cut_part(const std::string& au_name, const std::string& res_name, double start_seconds,
             double end_seconds);

// Not used by the workbench itself.

/// make_au_file with 16-bit summary and padding words.
int make_au_file_32(const std::string& res_name, const std::string& au_name);

}  // namespace torve
