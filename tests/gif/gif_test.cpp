// The GIF writer, read back by a decoder of our own.

#include <random>

#include "gif/gif_writer.hpp"
#include "gif/lzw.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The data of the sub-blocks; the zero byte behind them ends it all, so no block is empty.
Bytes sub_blocks(const Bytes& bytes) {
  Bytes data;
  std::size_t at = 0;
  for (; bytes.at(at) != 0; at += bytes[at] + 1U) {
    for (std::size_t i = 1; i <= bytes[at]; ++i)
      data.push_back(bytes.at(at + i));
  }
  EXPECT_EQ(at + 1, bytes.size());
  return data;
}

// The ordinary rule of readers: the code width grows when the next free code needs it.
Bytes decode(const Bytes& data) {
  std::vector<Bytes> strings;
  Bytes out;
  std::size_t bit = 0;
  unsigned width = 9;
  int previous = -1;
  for (;;) {
    std::size_t code = 0;
    for (unsigned i = 0; i < width; ++i, ++bit)
      code |= static_cast<std::size_t>(data.at(bit / 8) >> (bit % 8) & 1U) << i;
    if (code == 257) {
      EXPECT_EQ((bit + 7) / 8, data.size());
      return out;
    }
    if (code == 256) {
      strings.assign(258, {});
      for (std::size_t i = 0; i < 256; ++i)
        strings[i] = {static_cast<std::uint8_t>(i)};
      width = 9;
      previous = -1;
      continue;
    }
    if (previous >= 0 && strings.size() < 4096) {
      Bytes made = strings[static_cast<std::size_t>(previous)];
      made.push_back(code == strings.size() ? made[0] : strings.at(code)[0]);
      strings.push_back(made);
      if (strings.size() == std::size_t{1} << width && width < 12) ++width;
    }
    out.insert(out.end(), strings.at(code).begin(), strings[code].end());
    previous = static_cast<int>(code);
  }
}

Bytes through_lzw(const Bytes& bytes) {
  LzwEncoder encoder;
  encoder.encode(bytes);
  return decode(sub_blocks(encoder.finish()));
}

TEST(Lzw, EveryPictureComesBack) {
  std::mt19937 random(11);
  for (const unsigned colours : {1U, 2U, 16U, 256U}) {
    Bytes bytes(100'000);
    for (std::uint8_t& byte : bytes)
      byte = static_cast<std::uint8_t>(random() % colours);
    ASSERT_EQ(through_lzw(bytes), bytes) << colours;
  }
  // Every length in turn, so that the data also end just where a block or a byte does.
  Bytes bytes;
  for (int length = 0; length < 900; ++length) {
    ASSERT_EQ(through_lzw(bytes), bytes) << length;
    bytes.push_back(static_cast<std::uint8_t>(random()));
  }
}

// What readers see of the picture is tested in tests/desktop.
using GifTest = ScreenTest;

TEST_F(GifTest, EdgesOfTheScreenAndFailures) {
  const TemporaryDirectory directory;
  clearwin(0, 0, 800, 600, 2);
  // Above the screen everything is 15, and so is what is left of it.
  EXPECT_EQ(gif_indices({-2, -1, 2, 1}), (Bytes{15, 15, 15, 15, 15, 15, 15, 2}));
  EXPECT_EQ(gif_indices({799, 599, 805, 603}).back(), 0) << "beyond its far corner";
  const Bytes file = gif_file(1, 1, Bytes{4});
  EXPECT_TRUE(
      std::string(file.begin(), file.end()).starts_with(std::string("GIF87a\1\0\1\0\xF7\0\0", 13)));
  EXPECT_EQ(file.back(), 0x36);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(writeGIF1("no/p.gif", 0, 0, 9, 9), 1); }),
            "cannot_create_file\n");
}

}  // namespace
}  // namespace torve
