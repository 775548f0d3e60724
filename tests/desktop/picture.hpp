// What is on the screen, and what should be there.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace torve::desktop {

/// Pixels as 0xRRGGBB.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;

  [[nodiscard]] std::uint32_t at(int x, int y) const {
    return pixels[static_cast<std::size_t>(y * width + x)];
  }
  bool operator==(const Picture&) const = default;
};

struct Area {
  int x, y, width, height;
};

/// Number of pixels of this colour in the area.
[[nodiscard]] int count(const Picture& picture, const Area& area, std::uint32_t colour);

/// The part of a picture.
[[nodiscard]] Picture cut(const Picture& picture, const Area& area);

/// An icon as it was drawn, from its XPM text.
[[nodiscard]] Picture read_icon(const std::string& name);

/// Whether the text stands at (x, y) (top left) in font `font`: every pixel of its letters in
/// `ink`, no other pixel of its cells.
[[nodiscard]] bool shows_text(const Picture& picture, int font, int x, int y,
                              const std::string& text, std::uint32_t ink);

/// The PPM file that another program makes of a picture; `converter` is its command line.
[[nodiscard]] Picture read_with(const std::vector<std::string>& converter,
                                const std::filesystem::path& ppm);

void write_ppm(const Picture& picture, const std::filesystem::path& path);

}  // namespace torve::desktop
