#include "diagram/model/json_writer.hpp"

#include <array>
#include <charconv>
#include <cstdio>

namespace torve {

void JsonWriter::text(std::string_view key, std::string_view value) {
  put_key(key);
  put_text(value);
}

void JsonWriter::real(std::string_view key, double value) {
  put_key(key);
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  out_.append(digits.data(), end);
}

void JsonWriter::integer(std::string_view key, long long value) {
  put_key(key);
  out_ += std::to_string(value);
}

void JsonWriter::null(std::string_view key) {
  put_key(key);
  out_ += "null";
}

void JsonWriter::begin(std::string_view key, char bracket) {
  if (depth_ > 0) put_key(key);
  out_ += bracket;
  ++depth_;
}

void JsonWriter::end(char bracket) {
  --depth_;
  const bool is_empty = out_.back() == '{' || out_.back() == '[';
  if (!is_empty) new_line();
  out_ += bracket;
}

void JsonWriter::put_key(std::string_view key) {
  if (out_.back() != '{' && out_.back() != '[') out_ += ',';
  new_line();
  if (key.empty()) return;
  put_text(key);
  out_ += ": ";
}

void JsonWriter::put_text(std::string_view text) {
  out_ += '"';
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    if (character == '"' || character == '\\') {
      out_ += '\\';
      out_ += character;
    } else if (code < ' ') {
      std::array<char, 8> escape;
      std::snprintf(escape.data(), escape.size(), "\\u%04x", unsigned{code});
      out_ += escape.data();
    } else {
      out_ += character;
    }
  }
  out_ += '"';
}

void JsonWriter::new_line() {
  out_ += '\n';
  out_.append(static_cast<std::size_t>(depth_), ' ');
}

}  // namespace torve
