#include "gif/gif_writer.hpp"

#include <algorithm>
#include <cstdio>
#include <new>
#include <string_view>
#include <unordered_map>

#include "base/errors.hpp"
#include "base/output_file.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "gif/lzw.hpp"

namespace torve {

namespace {

constexpr int table_entries = 256;
constexpr std::uint8_t outside_index = 15;
constexpr double source_step = 0.8359375;    // screen columns from a picture column to the next
constexpr std::uint8_t screen_flags = 0xF7;  // global table of 256 entries, 8 bits a colour
constexpr std::uint8_t image_flags = 7;      // no local table, not interlaced
constexpr std::uint8_t minimum_code_size = 8;
constexpr std::uint8_t last_byte = 0x36;

using Bytes = std::vector<std::uint8_t>;

void put_16(Bytes& bytes, int value) {
  bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFF));
}

void put_colour_table(Bytes& bytes) {
  for (int entry = 0; entry < table_entries; ++entry) {
    for (const std::uint16_t intensity :
         {xcolor2[entry].red, xcolor2[entry].green, xcolor2[entry].blue}) {
      bytes.push_back(static_cast<std::uint8_t>(intensity >> 8));
    }
  }
}

// The index of each pixel value that has been met.
class PixelIndices {
 public:
  std::uint8_t of(std::uint32_t pixel) {
    const auto [known, is_new] = known_.try_emplace(pixel, std::uint8_t{0});
    if (is_new) {
      known->second = static_cast<std::uint8_t>(std::max(0, color_by_pixel1(pixel, copies)));
    }
    return known->second;
  }

 private:
  static constexpr int copies = 2;  // mode: among the entries from 21 on

  std::unordered_map<std::uint32_t, std::uint8_t> known_;
};

void WriteRaster(Bytes& bytes, std::span<const std::uint8_t> indices) {
  bytes.push_back(minimum_code_size);
  LzwEncoder encoder;
  encoder.encode(indices);
  const Bytes data = encoder.finish();
  bytes.insert(bytes.end(), data.begin(), data.end());
}

void WriteImage(Bytes& bytes, int width, int height, std::span<const std::uint8_t> indices) {
  bytes.push_back(',');
  put_16(bytes, 0);
  put_16(bytes, 0);
  put_16(bytes, width);
  put_16(bytes, height);
  bytes.push_back(image_flags);
  WriteRaster(bytes, indices);
}

}  // namespace

int gif_width(int columns) {
  return static_cast<int>(columns * 12.8 / 10.7);
}

Bytes gif_indices(const Rect& rect) {
  Bytes indices(static_cast<std::size_t>(gif_width(rect.width()) * rect.height()));
  PixelIndices known;
  Bytes row_of_screen(screen_width);  // the index of each screen column, by column
  std::vector<std::uint32_t> pixels(screen_width);
  auto out = indices.begin();
  for (int y = rect.y1; y < rect.y2; ++y) {
    const bool on_screen = y >= 0 && y < screen_height;
    if (on_screen) read_pixels({0, y, screen_width, y + 1}, pixels.data(), screen_width);
    std::transform(pixels.begin(), pixels.end(), row_of_screen.begin(),
                   [&known](std::uint32_t pixel) { return known.of(pixel); });
    for (int i = 0; i < gif_width(rect.width()); ++i, ++out) {
      const int x = static_cast<int>(i * source_step) + rect.x1;
      if (x < 0 || y < 0) {
        *out = outside_index;
      } else if (on_screen && x < screen_width) {
        *out = row_of_screen[static_cast<std::size_t>(x)];
      }
    }
  }
  return indices;
}

Bytes gif_file(int width, int height, std::span<const std::uint8_t> indices) {
  constexpr std::string_view signature = "GIF87a";
  Bytes bytes(signature.begin(), signature.end());
  put_16(bytes, width);
  put_16(bytes, height);
  bytes.push_back(screen_flags);
  bytes.push_back(0);  // background
  bytes.push_back(0);  // aspect
  put_colour_table(bytes);
  WriteImage(bytes, width, height, indices);
  bytes.push_back(last_byte);
  return bytes;
}

Outcome write_gif(const std::string& name, const Rect& rect) try {
  OutputFile file(name);
  if (!file) return file.outcome();
  const Bytes bytes = gif_file(gif_width(rect.width()), rect.height(), gif_indices(rect));
  std::printf("in writeGIF1 uColors=%d\n", table_entries);
  file.write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  static_cast<void>(file.finish());
  return file.outcome();
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory, .name = name};
}

int writeGIF1(const std::string& name, int x1, int y1, int x2, int y2) {
  if (x1 > x2 || y1 > y2) return 0;
  const Outcome outcome = write_gif(name, {x1, y1, x2 + 1, y2 + 1});
  if (outcome.cause == Cause::no_memory) {
    no_memory();
    return 0;
  }
  if (outcome.cause == Cause::not_created) cannot_create_file(name.c_str());
  return outcome.is_done() ? 0 : 1;
}

}  // namespace torve
