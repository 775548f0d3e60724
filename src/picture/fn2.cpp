#include "picture/fn2.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <vector>

#include "base/errors.hpp"
#include "base/files.hpp"
#include "display/colours.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/pixels.hpp"
#include "draw/plane_copy.hpp"
#include "draw/rectangles.hpp"

namespace torve {

namespace {

constexpr std::size_t picture_buffer_bytes = 25'600;
constexpr std::size_t header_bytes = 8;
constexpr int default_planes = 4;
constexpr int most = 32767;            // asks loadbuf_fromfile for all there is
constexpr int bad_picture_header = 1;  // file_error code

struct Fn2Header {
  int stride = 0, planes = 0, height = 0, width = 0;
};

int little_endian_16(const std::uint8_t* bytes) {
  return bytes[0] | bytes[1] << 8;
}

bool read_header(std::FILE* file, Fn2Header& header) {
  std::array<std::uint8_t, header_bytes> bytes;
  if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) return false;
  header.stride = little_endian_16(bytes.data());
  header.planes = bytes[2] == 0 ? default_planes : bytes[2];
  header.height = little_endian_16(&bytes[4]);
  header.width = little_endian_16(&bytes[6]);
  return header.planes <= screen_planes && header.width > 0 && header.height > 0;
}

// The stated size as cut to the caller's wishes, if the buffer holds it.
bool fit(const Fn2Header& header, int* width, int* height, int* stride, std::size_t room) {
  *height = std::min(*height, header.height);
  *stride = std::min(*stride, header.stride);
  *width = std::min(*width, header.width);
  return *width > 0 && *height > 0 && *stride >= header.planes * plane_row_bytes(*width) &&
         static_cast<std::size_t>(*stride) * static_cast<std::size_t>(*height) <= room;
}

// A file that ends early leaves the rest of the buffer as it was.
void read_rows(std::FILE* file, const Fn2Header& header, int width, int height, int stride,
               std::uint8_t* buffer) {
  const int kept = plane_row_bytes(width);
  const int skipped = plane_row_bytes(header.width) - kept;
  for (int row = 0; row < height; ++row, buffer += stride) {
    std::uint8_t* plane_row = buffer;
    for (int plane = 0; plane < header.planes; ++plane, plane_row += kept) {
      if (std::fread(plane_row, 1, static_cast<std::size_t>(kept), file) == 0) return;
      if (skipped > 0) std::fseek(file, skipped, SEEK_CUR);
    }
  }
}

int load_picture(std::FILE* file, int* width, int* height, int* stride,
                 std::span<std::uint8_t> buffer) {
  Fn2Header header;
  if (!read_header(file, header) || !fit(header, width, height, stride, buffer.size())) {
    file_error(bad_picture_header);
    return 1;
  }
  gplanes = header.planes;
  read_rows(file, header, *width, *height, *stride, buffer.data());
  return 0;
}

// In pictures of `planes` planes the colour number is the four bits from this one up.
void numbers_to_colours(int x, int y, int width, int height, int lowest_bit) {
  for (int row = y; row < y + height; ++row) {
    for (int column = x; column < x + width; ++column) {
      const int number = static_cast<int>(getpixel2c(column, row) >> lowest_bit & 15U);
      drawpixel2c(column, row, colour_pixel(number));
    }
  }
}

FilePtr open_picture(const std::string& name) {
  FilePtr file = open_installed_file(name, DataKind::picture, "r+b");
  return file ? std::move(file) : open_file(name, "r+b");
}

void set_bit(std::span<std::uint8_t> buffer, int index, int x, bool on) {
  if (index < 0 || static_cast<std::size_t>(index) >= buffer.size()) return;
  std::uint8_t& byte = buffer[static_cast<std::size_t>(index)];
  const unsigned mask = 0x80U >> (x & 7);
  byte = static_cast<std::uint8_t>(on ? byte | mask : byte & ~mask);
}

}  // namespace

int getpicture(const std::string& name, int x, int y, int* width, int* height) {
  *width = *height = 0;
  std::unique_ptr<std::uint8_t[]> memory(new (std::nothrow) std::uint8_t[picture_buffer_bytes]());
  if (!memory) {
    no_memory();
    return 1;
  }
  const FilePtr file = open_picture(name);
  if (!file) {
    cannot_find_file(name.c_str());
    return 1;
  }
  const std::span<std::uint8_t> buffer(memory.get(), picture_buffer_bytes);
  int w = most;
  int h = most;
  int stride = most;
  const int failed = load_picture(file.get(), &w, &h, &stride, buffer);
  if (failed == 0) {
    draw_buf1b(x, y, w, h, plane_row_bytes(w), stride, buffer);
    *width = w;
    *height = h;
  }
  gplanes = screen_planes;
  return failed;
}

int loadbuf_fromfile(const std::string& name, int* width, int* height, int* stride,
                     std::span<std::uint8_t> buffer) {
  const FilePtr file = open_data_file(name, DataKind::picture, "r+b");
  if (!file) {
    cannot_find_file(name.c_str());
    return 1;
  }
  return load_picture(file.get(), width, height, stride, buffer);
}

int savebuf_tofile(const std::string& name, int width, int height, int stride,
                   std::span<const std::uint8_t> buffer) {
  FilePtr file = open_file(name, "r+b");
  if (!file) file = open_file(name, "w+b");
  bool written = file != nullptr;
  if (written) {
    const auto low = [](int v) { return static_cast<std::uint8_t>(v & 0xFF); };
    const auto high = [](int v) { return static_cast<std::uint8_t>(v >> 8 & 0xFF); };
    const std::array<std::uint8_t, header_bytes> header = {low(stride), high(stride), low(gplanes),
                                                           0,           low(height),  high(height),
                                                           low(width),  high(width)};
    written = std::fwrite(header.data(), 1, header.size(), file.get()) == header.size();
    const std::size_t row_bytes = static_cast<std::size_t>(gplanes * plane_row_bytes(width));
    for (int row = 0; row < height && written; ++row) {
      const std::size_t start = static_cast<std::size_t>(row) * static_cast<std::size_t>(stride);
      written = start + row_bytes <= buffer.size() &&
                std::fwrite(buffer.data() + start, 1, row_bytes, file.get()) == row_bytes;
    }
    written = std::fclose(file.release()) == 0 && written;
  }
  if (written) return 0;
  cannot_create_file(name.c_str());
  static_cast<void>(getch());
  return 1;
}

void draw_buf1b(int x, int y, int width, int height, int plane_stride, int row_stride,
                std::span<const std::uint8_t> buffer) {
  draw_buf2c(x, y, width, height, {gplanes, plane_stride, row_stride}, buffer);
  if (gplanes == 4) numbers_to_colours(x, y, width, height, 20);
  if (gplanes == 16) numbers_to_colours(x, y, width, height, 8);
  mark_dirty({x, y, x + width, y + height});
}

void point_to_fn2(int x, int y, int colour, int plane_stride, int row_stride,
                  std::span<std::uint8_t> buffer) {
  constexpr int planes = 16;
  const std::uint32_t value = colour_pixel(colour);
  for (int plane = 0; plane < planes; ++plane) {
    set_bit(buffer, y * row_stride + plane * plane_stride + x / 8, x,
            (value >> (planes - 1 - plane) & 1U) != 0);
  }
}

void point_to_fn2b(int x, int y, std::uint32_t value, int plane_stride, int row_stride,
                   std::span<std::uint8_t> buffer) {
  for (int plane = 0; plane < gplanes; ++plane) {
    const int index = y * row_stride + plane * plane_stride + x / 8;
    const bool on = (value >> (gplanes - 1 - plane) & 1U) != 0;
    set_bit(buffer, index, x, on);
    set_bit(buffer, index + row_stride, x, on);
  }
}

void point_to_fn2_b(int x, int y, std::uint32_t value, int plane_stride, int row_stride,
                    std::span<std::uint8_t> buffer) {
  point_to_fn2b(x, y, value, plane_stride, row_stride, buffer);
}

std::uint32_t point_from_fn2b(int x, int y, int plane_stride, int row_stride,
                              std::span<const std::uint8_t> buffer) {
  std::uint32_t value = 0;
  for (int plane = 0; plane < gplanes; ++plane) {
    const int index = y * row_stride + plane * plane_stride + x / 8;
    const bool inside = index >= 0 && static_cast<std::size_t>(index) < buffer.size();
    const unsigned byte = inside ? buffer[static_cast<std::size_t>(index)] : 0U;
    value = value << 1 | (byte >> (7 - (x & 7)) & 1U);
  }
  return value;
}

int point_from_fn2(int x, int y, int plane_stride, int row_stride,
                   std::span<const std::uint8_t> buffer) {
  const std::uint32_t value = point_from_fn2b(x, y, plane_stride, row_stride, buffer);
  const std::uint32_t mask = 0xFFFFFFU >> (screen_planes - gplanes);
  for (int number = 0; number < colour_count; ++number) {
    if ((colour_pixel(number) & mask) == value) return number;
  }
  return -1;
}

}  // namespace torve
