#include "desktop/picture.hpp"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "xpm.hpp"

namespace torve::desktop {

namespace {

std::string read_file(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

int pair_class(char letter) {
  if (letter >= 'a' && letter <= 'z') return letter - 'a';
  if (letter >= 'A' && letter <= 'Z') return letter - 35;
  return 0;
}

constexpr int glyph_rows = 10;

/// The glyph's rows from a font file: height, count, then the rows of each glyph.
bool pixel_of(const std::string& font, char letter, int x, int y) {
  const auto code = static_cast<unsigned char>(letter);
  const auto row = static_cast<unsigned char>(
      font[2 + static_cast<std::size_t>(code) * glyph_rows + static_cast<std::size_t>(y)]);
  return (row >> (7 - x) & 1) != 0;
}

}  // namespace

int count(const Picture& picture, const Area& area, std::uint32_t colour) {
  int found = 0;
  for (int y = area.y; y < area.y + area.height; ++y) {
    for (int x = area.x; x < area.x + area.width; ++x)
      found += picture.at(x, y) == colour;
  }
  return found;
}

Picture cut(const Picture& picture, const Area& area) {
  Picture part = {.width = area.width, .height = area.height, .pixels = {}};
  for (int y = area.y; y < area.y + area.height; ++y) {
    for (int x = area.x; x < area.x + area.width; ++x)
      part.pixels.push_back(picture.at(x, y));
  }
  return part;
}

Picture read_icon(const std::string& name) {
  const torve::Picture drawn =
      parse_xpm(read_file(std::filesystem::path(TORVE_ICON_DIR) / (name + ".xpm")));
  return {.width = drawn.width, .height = drawn.height, .pixels = drawn.pixels};
}

bool shows_text(const Picture& picture, int font, int x, int y, const std::string& text,
                std::uint32_t ink) {
  const std::filesystem::path stem =
      std::filesystem::path(TORVE_DATA_DIR) / "font" / ("font" + std::to_string(font));
  const std::string glyphs = read_file(stem.string() + ".dat");
  const std::string advances = read_file(stem.string() + ".dis");
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int next = i + 1 < text.size() ? pair_class(text[i + 1]) : 0;
    const int advance = advances[static_cast<std::size_t>(pair_class(text[i]) * 60 + next)];
    for (int row = 0; row < glyph_rows; ++row) {
      for (int column = 0; column < advance; ++column) {
        const bool inked = picture.at(x + column, y + row) == ink;
        if (inked != pixel_of(glyphs, text[i], column, row)) return false;
      }
    }
    x += advance;
  }
  return true;
}

void write_ppm(const Picture& picture, const std::filesystem::path& path) {
  std::ofstream out(path, std::ios::binary);
  out << "P6 " << picture.width << ' ' << picture.height << " 255\n";
  for (const std::uint32_t pixel : picture.pixels) {
    out.put(static_cast<char>(pixel >> 16)).put(static_cast<char>(pixel >> 8));
    out.put(static_cast<char>(pixel));
  }
}

}  // namespace torve::desktop
