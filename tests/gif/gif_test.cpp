// The GIF writer, read back by a decoder of our own.

#include <optional>
#include <random>

#include "gif/gif_writer.hpp"
#include "gif/lzw.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Bytes = std::vector<std::uint8_t>;

int word(const Bytes& bytes, std::size_t at) {
  return bytes.at(at) | bytes.at(at + 1) << 8;
}

// The data of the sub-blocks from `at` on; the zero byte that ends them must stand `behind` bytes
// from the end, so no block is empty.
std::optional<Bytes> sub_blocks(const Bytes& bytes, std::size_t at, std::size_t behind) {
  Bytes data;
  for (;; at += bytes[at] + 1U) {
    if (at >= bytes.size() || at + bytes[at] >= bytes.size()) return std::nullopt;
    if (bytes[at] == 0) return at + 1 + behind == bytes.size() ? std::optional(data) : std::nullopt;
    data.insert(data.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1 + bytes[at]);
  }
}

// The ordinary rule of readers: the code width grows when the next free code needs it.
std::optional<Bytes> decode(const Bytes& data) {
  std::vector<Bytes> strings;
  Bytes out;
  std::size_t bit = 0;
  unsigned width = 9;
  std::optional<std::size_t> previous;
  const auto next_code = [&]() -> std::size_t {
    std::size_t code = 0;
    for (unsigned i = 0; i < width; ++i, ++bit) {
      code |= static_cast<std::size_t>(data.at(bit / 8) >> (bit % 8) & 1U) << i;
    }
    return code;
  };
  for (;;) {
    const std::size_t code = next_code();
    if (code == 257) return (bit + 7) / 8 == data.size() ? std::optional(out) : std::nullopt;
    if (code == 256) {
      strings.assign(258, {});
      for (std::size_t i = 0; i < 256; ++i)
        strings[i] = {static_cast<std::uint8_t>(i)};
      width = 9;
      previous.reset();
      continue;
    }
    if (strings.empty() || code > strings.size() || (code == strings.size() && !previous)) {
      return std::nullopt;
    }
    if (previous && strings.size() < 4096) {
      Bytes made = strings[*previous];
      made.push_back(code == strings.size() ? made[0] : strings[code][0]);
      strings.push_back(made);
      if (strings.size() == std::size_t{1} << width && width < 12) ++width;
    }
    out.insert(out.end(), strings[code].begin(), strings[code].end());
    previous = code;
  }
}

std::optional<Bytes> through_lzw(const Bytes& bytes) {
  LzwEncoder encoder;
  encoder.encode(bytes);
  const std::optional<Bytes> data = sub_blocks(encoder.finish(), 0, 0);
  return data ? decode(*data) : std::nullopt;
}

TEST(Lzw, EveryPictureComesBack) {
  std::mt19937 random(11);
  for (const std::size_t length : {0U, 1U, 2U, 300U, 5000U, 100'000U}) {
    for (const unsigned colours : {1U, 2U, 16U, 256U}) {
      Bytes bytes(length);
      for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random() % colours);
      ASSERT_EQ(through_lzw(bytes), bytes) << length << " pixels of " << colours;
    }
  }
  // Every length in turn, so that the data also end just where a block or a byte does.
  Bytes bytes;
  for (int length = 0; length < 900; ++length) {
    ASSERT_EQ(through_lzw(bytes), bytes) << length;
    bytes.push_back(static_cast<std::uint8_t>(random()));
  }
  EXPECT_EQ(GetCodeLength(0), 3);
  EXPECT_EQ(GetCodeLength(511), 9);
  EXPECT_EQ(GetCodeLength(512), 10);
  EXPECT_EQ(GetCodeLength(4095), 12);
}

class GifTest : public ScreenTest {
 protected:
  static Bytes written(int x1, int y1, int x2, int y2) {
    printed_by([&] { EXPECT_EQ(writeGIF1("p.gif", x1, y1, x2, y2), 0); });
    std::ifstream file("p.gif", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  TemporaryDirectory directory_;
};

TEST_F(GifTest, HeaderTableAndPicture) {
  clearwin(0, 0, 800, 600, 1);
  drawpixel(104, 52, 4);
  drawpixel(105, 52, 15);
  drawpixel2c(106, 52, 0x123456);
  const Bytes file = written(100, 50, 109, 56);
  const std::size_t picture = 13 + 768;
  ASSERT_GT(file.size(), picture + 11);
  EXPECT_EQ(std::string(file.begin(), file.begin() + 6), "GIF87a");
  EXPECT_EQ(word(file, 6), 11) << "10 columns widened by 12.8 / 10.7";
  EXPECT_EQ(word(file, 8), 7);
  EXPECT_EQ((Bytes{file[10], file[11], file[12]}), (Bytes{0xF7, 0, 0}));
  EXPECT_EQ((Bytes{file[13 + 3], file[13 + 4], file[13 + 5]}), (Bytes{0, 0, 0xFF})) << "blue";
  EXPECT_EQ((Bytes{file[13 + 78], file[13 + 79], file[13 + 80]}), (Bytes{0xBC, 0x8F, 0x8F}))
      << "what white becomes";
  EXPECT_EQ(file[picture], ',');
  EXPECT_EQ(word(file, picture + 5), 11);
  EXPECT_EQ(word(file, picture + 7), 7);
  EXPECT_EQ((Bytes{file[picture + 9], file[picture + 10]}), (Bytes{7, 8}));
  EXPECT_EQ(file.back(), 0x36);
  const std::optional<Bytes> data = sub_blocks(file, picture + 11, 1);
  ASSERT_TRUE(data);
  const std::optional<Bytes> pixels = decode(*data);
  ASSERT_TRUE(pixels);
  for (int i = 0; i < 11; ++i) {
    const int column = static_cast<int>(i * 0.8359375);
    const std::uint8_t index = column == 4 ? 4 : column == 5 ? 26 : column == 6 ? 0 : 1;
    EXPECT_EQ((*pixels)[22 + static_cast<std::size_t>(i)], index) << i;
  }
  EXPECT_EQ(pixels->size(), 77U);
}

TEST_F(GifTest, EdgesOfTheScreenAndFailures) {
  clearwin(0, 0, 800, 600, 2);
  const Bytes indices = gif_indices({-2, -1, 4, 2});
  const std::size_t width = static_cast<std::size_t>(gif_width(6));
  EXPECT_EQ(indices[0], 15) << "above the screen";
  EXPECT_EQ(indices[width], 15) << "left of it";
  EXPECT_EQ(indices[width + width - 1], 2);
  EXPECT_EQ(gif_indices({799, 599, 805, 603}).back(), 0) << "beyond its far corner";
  EXPECT_EQ(writeGIF1("none.gif", 10, 10, 9, 20), 0);
  EXPECT_FALSE(std::filesystem::exists("none.gif"));
  EXPECT_EQ(printed_by([] { EXPECT_EQ(writeGIF1("no/p.gif", 0, 0, 9, 9), 1); }),
            "cannot_create_file\n");
  const Bytes first = written(0, 0, 799, 170);
  EXPECT_EQ(written(0, 0, 799, 170), first);
}

}  // namespace
}  // namespace torve
