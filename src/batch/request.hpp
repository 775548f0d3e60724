// What the user asked for: a command's words and options.
#pragma once

#include <charconv>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/signal/sample_file.hpp"
#include "base/enum_flags.hpp"

namespace torve {

using Words = std::span<const std::string>;

/// The options that a command may have.
enum class Options : unsigned {
  none = 0,
  range = 1,      // --start N --end N
  values = 2,     // --values
  format = 4,     // --format eps|gif or pdf|svg|png
  figure = 8,     // --size WxH --title TEXT
  average = 16,   // --average BLOCK
  decibels = 32,  // --db
  json = 64,      // --json
};
template <>
inline constexpr bool is_flag_enum<Options> = true;

struct Request {
  const char* command = "";
  std::vector<std::string> words = {};
  SampleRange range = {};
  bool values = false;
  bool json = false;
  std::string format = {};  // as given, or none
  std::string size = {};    // as given, or none
  std::string title = {};
  std::optional<int> average = std::nullopt;  // samples of a block
  bool decibels = false;
};

/// Takes the options out of `words`. Nothing if one is not among `allowed`, lacks its value, or
/// selects no sample.
[[nodiscard]] std::optional<Request> parse_request(const char* command, Options allowed,
                                                   Words words);

/// The whole word as a number.
template <typename Number>
[[nodiscard]] std::optional<Number> number_of(const std::string& word) {
  Number number = {};
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

/// Word `i`, or `otherwise` if there are fewer.
[[nodiscard]] std::string word_or(const Request& request, std::size_t i, const char* otherwise);

/// Whether the name ends so, in upper or lower case (`ending` is in lower case).
[[nodiscard]] bool has_ending(const std::string& name, std::string_view ending);

}  // namespace torve
