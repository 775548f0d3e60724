// What is left of a line of text, and the numbers, texts and words that it begins with.
#pragma once

#include <charconv>
#include <string>
#include <string_view>

#include "diagram/model/vobj.hpp"

namespace torve {

/// Functions that take something return false, or nothing, when the line does not begin with it;
/// what is left of the line is not meant to be used then.
class LineReader {
 public:
  explicit LineReader(std::string_view line) : rest_(line) {}

  /// Whether there were any.
  bool skip_blanks();
  [[nodiscard]] bool at_end() const { return rest_.empty(); }
  [[nodiscard]] bool begins_with(char wanted) const { return rest_.starts_with(wanted); }

  std::string_view take_until(const char* delimiters);
  bool take(char wanted);

  template <typename Number, typename... Format>
  bool take_number(Number& number, Format... format) {
    const auto [end, error] =
        std::from_chars(rest_.data(), rest_.data() + rest_.size(), number, format...);
    if (error != std::errc{}) return false;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return true;
  }

  /// A quoted text of at most label_text_length bytes, none of them zero.
  bool take_text(char (&out)[vobj_name_size]);
  /// One without that limit.
  bool take_text(std::string& out);

  /// A value as it stands: a quoted text, or what goes on to the next blank, none of it a quote or
  /// a control character. Empty when there is none.
  std::string_view take_value();

 private:
  int take_character();
  int take_hex_byte();

  std::string_view rest_;
};

}  // namespace torve
