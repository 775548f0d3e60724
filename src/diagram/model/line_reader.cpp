#include "diagram/model/line_reader.hpp"

#include <algorithm>

namespace torve {

bool LineReader::skip_blanks() {
  const std::size_t start = std::min(rest_.find_first_not_of(" \t"), rest_.size());
  rest_.remove_prefix(start);
  return start != 0;
}

std::string_view LineReader::take_until(const char* delimiters) {
  const std::string_view word = rest_.substr(0, rest_.find_first_of(delimiters));
  rest_.remove_prefix(word.size());
  return word;
}

bool LineReader::take(char wanted) {
  if (!begins_with(wanted)) return false;
  rest_.remove_prefix(1);
  return true;
}

bool LineReader::take_text(std::string& out) {
  out.clear();
  if (!take('"')) return false;
  while (!take('"')) {
    const int code = take_character();
    if (code <= 0) return false;
    out += static_cast<char>(code);
  }
  return true;
}

bool LineReader::take_text(char (&out)[vobj_name_size]) {
  std::string text;
  if (!take_text(text) || text.size() > std::size_t{label_text_length}) return false;
  store_text(out, text.c_str());
  return true;
}

std::string_view LineReader::take_value() {
  const std::string_view all = rest_;
  std::string text;
  if (begins_with('"')) {
    if (!take_text(text)) return {};
  } else {
    const std::string_view word = take_until(" \t");
    const auto is_strange = [](char c) { return c == '"' || static_cast<unsigned char>(c) < ' '; };
    if (std::any_of(word.begin(), word.end(), is_strange)) return {};
  }
  return all.substr(0, all.size() - rest_.size());
}

// The next byte of a text, -1 for none.
int LineReader::take_character() {
  if (rest_.empty()) return -1;
  const auto code = static_cast<unsigned char>(rest_.front());
  rest_.remove_prefix(1);
  if (code != '\\') return code < ' ' ? -1 : code;
  if (take('x')) return take_hex_byte();
  if (rest_.empty() || (rest_.front() != '"' && rest_.front() != '\\')) return -1;
  const char escaped = rest_.front();
  rest_.remove_prefix(1);
  return escaped;
}

int LineReader::take_hex_byte() {
  constexpr std::size_t digits = 2;
  unsigned code = 0;
  if (rest_.size() < digits) return -1;
  const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + digits, code, 16);
  if (error != std::errc{} || end != rest_.data() + digits) return -1;
  rest_.remove_prefix(digits);
  return static_cast<int>(code);
}

}  // namespace torve
