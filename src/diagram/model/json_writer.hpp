// JSON, written piece by piece.
#pragma once

#include <string>
#include <string_view>

namespace torve {

/// Objects and arrays are begun and ended; inside an object every value has a key, inside an array
/// and at the top none.
class JsonWriter {
 public:
  void begin_object(std::string_view key = {}) { begin(key, '{'); }
  void begin_array(std::string_view key = {}) { begin(key, '['); }
  void end_object() { end('}'); }
  void end_array() { end(']'); }

  /// A text is UTF-8.
  void text(std::string_view key, std::string_view value);
  /// A real is finite, and is written with as many digits as give the same number again.
  void real(std::string_view key, double value);
  void integer(std::string_view key, long long value);
  void null(std::string_view key);

  /// What has been written; a line end behind it.
  [[nodiscard]] std::string take() { return out_ + '\n'; }

 private:
  void begin(std::string_view key, char bracket);
  void end(char bracket);
  void put_key(std::string_view key);
  void put_text(std::string_view text);
  void new_line();

  std::string out_;
  int depth_ = 0;
};

}  // namespace torve
