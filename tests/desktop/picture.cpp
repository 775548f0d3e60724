#include "desktop/picture.hpp"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "desktop/process.hpp"
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
constexpr int cell_width = 8;

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
  // A font without distances has cells of one width.
  const bool proportional = std::filesystem::exists(stem.string() + ".dis");
  const std::string advances = proportional ? read_file(stem.string() + ".dis") : "";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int next = i + 1 < text.size() ? pair_class(text[i + 1]) : 0;
    const auto pair = static_cast<std::size_t>(pair_class(text[i]) * 60 + next);
    const int advance = proportional ? advances[pair] : cell_width;
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

Picture read_with(const std::vector<std::string>& converter, const std::filesystem::path& ppm) {
  if (Process({.words = converter}).wait() != 0) {
    throw std::runtime_error(converter.front() + " does not read the picture");
  }
  std::istringstream in(read_file(ppm));
  std::string word;
  const auto next = [&] {
    while (in >> word && word[0] == '#')
      std::getline(in, word);
    return word;
  };
  if (next() != "P6") throw std::runtime_error("no PPM file");
  Picture picture;
  picture.width = std::stoi(next());
  picture.height = std::stoi(next());
  next();
  in.get();
  const auto byte = [&] { return static_cast<std::uint32_t>(in.get()) & 0xFF; };
  for (int i = 0; i < picture.width * picture.height; ++i) {
    const std::uint32_t red = byte();
    const std::uint32_t green = byte();
    picture.pixels.push_back(red << 16 | green << 8 | byte());
  }
  return picture;
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
