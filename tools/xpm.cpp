#include "xpm.hpp"

#include <array>
#include <charconv>
#include <optional>
#include <stdexcept>

namespace torve {

namespace {

constexpr int plane_count = 24;
// What the program's picture reader can hold: height x 24 planes x row bytes.
constexpr int most_fn2_bytes = 25600;

using ColourTable = std::array<std::optional<std::uint32_t>, 256>;

[[noreturn]] void refuse(const std::string& reason) {
  throw std::runtime_error(reason);
}

/// The contents of the quoted strings of the text, in order; XPM keeps all its data in them.
std::vector<std::string_view> quoted_strings(std::string_view text) {
  std::vector<std::string_view> strings;
  for (std::size_t at = text.find('"'); at != std::string_view::npos; at = text.find('"', at)) {
    const std::size_t end = text.find('"', at + 1);
    if (end == std::string_view::npos) refuse("a string without an end");
    strings.push_back(text.substr(at + 1, end - at - 1));
    at = end + 1;
  }
  return strings;
}

template <std::size_t N>
std::array<int, N> numbers(std::string_view text) {
  std::array<int, N> values = {};
  const char* at = text.data();
  const char* const end = at + text.size();
  for (int& value : values) {
    while (at != end && *at == ' ')
      ++at;
    const auto [next, error] = std::from_chars(at, end, value);
    if (error != std::errc()) refuse("a number is missing in \"" + std::string(text) + "\"");
    at = next;
  }
  return values;
}

std::uint32_t colour_of(std::string_view line) {
  const std::string_view text = line.substr(1);
  constexpr std::string_view lead = " c #";
  std::uint32_t colour = 0;
  const std::size_t digits = lead.size() + 6;
  if (text.size() != digits || !text.starts_with(lead) ||
      std::from_chars(text.data() + lead.size(), text.data() + digits, colour, 16).ptr !=
          text.data() + digits) {
    refuse("not a colour: \"" + std::string(line) + "\"");
  }
  return colour;
}

}  // namespace

Picture parse_xpm(std::string_view text) {
  const std::vector<std::string_view> lines = quoted_strings(text);
  if (lines.empty()) refuse("no picture in it");
  const auto [width, height, colour_count, characters] = numbers<4>(lines[0]);
  if (width < 1 || height < 1 || colour_count < 1) refuse("a size below 1");
  if (characters != 1) refuse("not one character a pixel");
  if (lines.size() !=
      1 + static_cast<std::size_t>(colour_count) + static_cast<std::size_t>(height)) {
    refuse("the number of lines does not fit the header");
  }

  ColourTable colours = {};
  std::size_t next = 1;
  for (int i = 0; i < colour_count; ++i, ++next) {
    if (lines[next].empty()) refuse("an empty colour line");
    colours[static_cast<std::uint8_t>(lines[next][0])] = colour_of(lines[next]);
  }

  Picture picture = {.width = width, .height = height, .pixels = {}};
  for (; next < lines.size(); ++next) {
    if (lines[next].size() != static_cast<std::size_t>(width)) refuse("a row of another width");
    for (const char key : lines[next]) {
      const std::optional<std::uint32_t>& colour = colours[static_cast<std::uint8_t>(key)];
      if (!colour) refuse(std::string("no colour for the character ") + key);
      picture.pixels.push_back(*colour);
    }
  }
  return picture;
}

std::string fn2_bytes(const Picture& picture) {
  const int plane_bytes = picture.width / 8 + 1;
  const int row_bytes = plane_bytes * plane_count;
  if (row_bytes * picture.height > most_fn2_bytes) refuse("too large for an fn2 picture");

  const std::array<int, 8> header = {
      row_bytes & 255,      row_bytes >> 8,      plane_count,         0,
      picture.height & 255, picture.height >> 8, picture.width & 255, picture.width >> 8};
  std::string bytes;
  for (const int value : header)
    bytes.push_back(static_cast<char>(value));
  bytes.resize(header.size() + static_cast<std::size_t>(row_bytes * picture.height));

  std::size_t row_start = header.size();
  auto pixel = picture.pixels.begin();
  for (int y = 0; y < picture.height; ++y, row_start += static_cast<std::size_t>(row_bytes)) {
    for (int x = 0; x < picture.width; ++x, ++pixel) {
      for (int plane = 0; plane < plane_count; ++plane) {
        if ((*pixel >> (plane_count - 1 - plane) & 1U) == 0) continue;
        char& byte = bytes[row_start + static_cast<std::size_t>(plane * plane_bytes + x / 8)];
        byte = static_cast<char>(byte | 0x80 >> (x % 8));
      }
    }
  }
  return bytes;
}

}  // namespace torve
