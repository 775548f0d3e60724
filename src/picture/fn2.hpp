// Pictures in the program's own plane-oriented format, fn2.
//
// A file is a header of eight bytes (numbers little-endian) and the packed rows:
//   0  2 bytes  row stride s of the buffer the picture was saved from, at least P * (w / 8 + 1)
//   2  1 byte   number of planes P, 0 means 4
//   3  1 byte   0
//   4  2 bytes  height h in rows
//   6  2 bytes  width w in pixels
//   8  h * P * (w / 8 + 1) bytes: rows from the top, in each P plane rows, plane 0 (the most
//      significant bit) first, bit 7 of the first byte leftmost
// Pictures of 24 planes hold pixel values, those of 4 colour numbers, those of 16 colour numbers
// in the lowest four bits. `gplanes` is the number of planes the routines work with.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace torve {

/// Draws a picture with its upper left corner at (x, y), pixels. The picture directory is looked
/// into first, then the working directory. Returns 0 and the picture's size, or 1 and a size of 0
/// after the error has been shown: no such file, a header that cannot be true, no memory.
[[nodiscard]] int getpicture(const std::string& name, int x, int y, int* width, int* height);

/// Copies a buffer of gplanes planes to (x, y) and turns the colour numbers of pictures of 4 and
/// 16 planes into their pixel values.
void draw_buf1b(int x, int y, int width, int height, int plane_stride, int row_stride,
                std::span<const std::uint8_t> buffer);

// Not used by the workbench itself.

/// Reads a file (working directory first) into a plane buffer. The three numbers hold what the
/// caller wants at most (pixels, rows, bytes a row) and return what was read; a smaller width
/// reads the left part of each row. Sets gplanes to the file's planes. Returns 1 after the error
/// has been shown when there is no such file or its header does not fit the buffer.
[[nodiscard]] int loadbuf_fromfile(const std::string& name, int* width, int* height, int* stride,
                                   std::span<std::uint8_t> buffer);

/// Writes a plane buffer of gplanes planes over a file's start, or into a new file. Returns 0, or
/// 1 after the error has been shown and a key awaited.
[[nodiscard]] int savebuf_tofile(const std::string& name, int width, int height, int stride,
                                 std::span<const std::uint8_t> buffer);

/// Sets pixel (x, y) of a 16-plane buffer to the lower 16 bits of a colour number's pixel value.
void point_to_fn2(int x, int y, int colour, int plane_stride, int row_stride,
                  std::span<std::uint8_t> buffer);

/// Sets pixel (x, y) of a gplanes-plane buffer and the pixel below it to a value; what would lie
/// behind the buffer is left out.
void point_to_fn2b(int x, int y, std::uint32_t value, int plane_stride, int row_stride,
                   std::span<std::uint8_t> buffer);
void point_to_fn2_b(int x, int y, std::uint32_t value, int plane_stride, int row_stride,
                    std::span<std::uint8_t> buffer);

/// The value of pixel (x, y) of a gplanes-plane buffer; what lies behind the buffer is 0.
[[nodiscard]] std::uint32_t point_from_fn2b(int x, int y, int plane_stride, int row_stride,
                                            std::span<const std::uint8_t> buffer);

/// The first colour number whose pixel value ends in the bits of pixel (x, y); -1 for none.
[[nodiscard]] int point_from_fn2(int x, int y, int plane_stride, int row_stride,
                                 std::span<const std::uint8_t> buffer);

}  // namespace torve
