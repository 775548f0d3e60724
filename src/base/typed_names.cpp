#include "base/typed_names.hpp"

#include <algorithm>
#include <bit>
#include <string_view>
#include <sys/stat.h>

namespace torve {

namespace {

bool names_are_typed = false;

bool is_continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The length of the character that begins with `byte`, or 0. No more than that is asked: what
// matters is to tell it from Latin-1, in which a letter with an accent seldom stands before two
// signs.
std::size_t utf8_length(char byte) {
  const int ones = std::countl_one(static_cast<unsigned char>(byte));
  if (ones == 0) return 1;
  return ones >= 2 && ones <= 4 ? static_cast<std::size_t>(ones) : 0;
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = utf8_length(text.front());
    if (length == 0 || length > text.size()) return false;
    const std::string_view rest = text.substr(1, length - 1);
    if (!std::all_of(rest.begin(), rest.end(), is_continuation)) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace

std::string utf8_of_latin1(std::string_view text) {
  std::string utf8;
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    if (code >= 0x80) utf8 += static_cast<char>(0xC0 | (code >> 6));
    utf8 += static_cast<char>(code < 0x80 ? code : 0x80 | (code & 0x3F));
  }
  return utf8;
}

void take_names_as_typed(bool typed) {
  names_are_typed = typed;
}

std::string meant_output(const std::string& name) {
  return !names_are_typed || is_utf8(name) ? name : utf8_of_latin1(name);
}

std::string meant_input(const std::string& name) {
  struct stat info = {};
  return stat(name.c_str(), &info) == 0 ? name : meant_output(name);
}

}  // namespace torve
