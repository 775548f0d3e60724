// The GIF writer, read back by a decoder of our own.

#include <optional>
#include <random>

#include "gif/gif_writer.hpp"
#include "gif/lzw.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Bytes = std::vector<std::uint8_t>;

// The data of the sub-blocks from `at` on; the zero byte that ends them must stand `behind` bytes
// from the end, so no block is empty.
Bytes sub_blocks(const Bytes& bytes, std::size_t at, std::size_t behind) {
  Bytes data;
  for (; bytes.at(at) != 0; at += bytes[at] + 1U) {
    for (std::size_t i = 1; i <= bytes[at]; ++i)
      data.push_back(bytes.at(at + i));
  }
  EXPECT_EQ(at + 1 + behind, bytes.size());
  return data;
}

// The ordinary rule of readers: the code width grows when the next free code needs it.
std::optional<Bytes> decode(const Bytes& data) {
  std::vector<Bytes> strings;
  Bytes out;
  std::size_t bit = 0;
  unsigned width = 9;
  constexpr std::size_t none = 4096;
  std::size_t previous = none;
  for (;;) {
    std::size_t code = 0;
    for (unsigned i = 0; i < width; ++i, ++bit)
      code |= static_cast<std::size_t>(data.at(bit / 8) >> (bit % 8) & 1U) << i;
    if (code == 257) return (bit + 7) / 8 == data.size() ? std::optional(out) : std::nullopt;
    if (code == 256) {
      strings.assign(258, {});
      for (std::size_t i = 0; i < 256; ++i)
        strings[i] = {static_cast<std::uint8_t>(i)};
      width = 9;
      previous = none;
      continue;
    }
    if (code > strings.size() || (code == strings.size() && previous == none)) return std::nullopt;
    if (previous != none && strings.size() < 4096) {
      Bytes made = strings[previous];
      made.push_back(code == strings.size() ? made[0] : strings[code][0]);
      strings.push_back(made);
      if (strings.size() == std::size_t{1} << width && width < 12) ++width;
    }
    out.insert(out.end(), strings.at(code).begin(), strings[code].end());
    previous = code;
  }
}

std::optional<Bytes> through_lzw(const Bytes& bytes) {
  LzwEncoder encoder;
  encoder.encode(bytes);
  return decode(sub_blocks(encoder.finish(), 0, 0));
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

class GifTest : public ScreenTest {
 protected:
  TemporaryDirectory directory_;
};

TEST_F(GifTest, HeaderTableAndPicture) {
  clearwin(0, 0, 800, 600, 1);
  drawpixel(104, 52, 4);
  drawpixel(105, 52, 15);
  drawpixel2c(106, 52, 0x123456);
  printed_by([&] { EXPECT_EQ(writeGIF1("p.gif", 100, 50, 109, 56), 0); });
  std::ifstream stream("p.gif", std::ios::binary);
  const Bytes file{std::istreambuf_iterator<char>(stream), {}};
  const std::size_t picture = 13 + 768;
  ASSERT_GT(file.size(), picture + 11);
  // 10 columns are widened by 12.8 / 10.7.
  const std::pair<std::size_t, Bytes> parts[] = {
      {0, {'G', 'I', 'F', '8', '7', 'a', 11, 0, 7, 0, 0xF7, 0, 0}},
      {13 + 3, {0, 0, 0xFF}},         // blue
      {13 + 78, {0xBC, 0x8F, 0x8F}},  // what white becomes
      {picture, {',', 0, 0, 0, 0, 11, 0, 7, 0, 7, 8}},
      {file.size() - 1, {0x36}}};
  for (const auto& [at, bytes] : parts)
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), &file[at])) << at;
  const std::optional<Bytes> pixels = decode(sub_blocks(file, picture + 11, 1));
  ASSERT_TRUE(pixels);
  ASSERT_EQ(pixels->size(), 77U);
  const auto row = pixels->begin() + 22;
  EXPECT_EQ(Bytes(row, row + 11), (Bytes{1, 1, 1, 1, 1, 4, 26, 26, 0, 1, 1}));
}

TEST_F(GifTest, EdgesOfTheScreenAndFailures) {
  clearwin(0, 0, 800, 600, 2);
  // Above the screen everything is 15, and so is what is left of it.
  EXPECT_EQ(gif_indices({-2, -1, 2, 1}), (Bytes{15, 15, 15, 15, 15, 15, 15, 2}));
  EXPECT_EQ(gif_indices({799, 599, 805, 603}).back(), 0) << "beyond its far corner";
  EXPECT_EQ(writeGIF1("none.gif", 10, 10, 9, 20), 0);
  EXPECT_FALSE(std::filesystem::exists("none.gif"));
  EXPECT_EQ(printed_by([] { EXPECT_EQ(writeGIF1("no/p.gif", 0, 0, 9, 9), 1); }),
            "cannot_create_file\n");
}

}  // namespace
}  // namespace torve
