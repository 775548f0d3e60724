#include <bit>
#include <cfloat>
#include <random>

#include "app/signal/au_codec.hpp"
#include "app/signal/au_file.hpp"
#include "bench/literal.hpp"
#include "bench/signals.hpp"
#include "fuzz/memory_file.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

std::string bytes_of(float value) {
  std::array<std::uint8_t, 4> bytes = {};
  build_binary32(value, bytes);
  return {bytes.begin(), bytes.end()};
}

std::string word(std::uint32_t value) {
  return {static_cast<char>(value), static_cast<char>(value >> 8), static_cast<char>(value >> 16),
          static_cast<char>(value >> 24)};
}

TEST(AuCodec, Binary32) {
  const std::pair<float, std::uint32_t> cases[] = {
      {0.1F, 0x3dcccccd},    {-2.5F, 0xc0200000},      {FLT_MAX, 0x7f7fffff},
      {0x1p-102F, 0},        {-INFINITY, 0xff7fffff},  {-0.0F, 0},
      {0x1p-127F, 0x400000}, {0x1.8p-102F, 0x0cc00000}};
  for (const auto& [value, expected] : cases)
    EXPECT_EQ(bytes_of(value), word(expected)) << value;
  std::mt19937 random(5);
  for (int i = 0; i < 100'000; ++i) {
    const auto bits = static_cast<std::uint32_t>(random());
    const float value = std::bit_cast<float>(bits);
    if (std::isfinite(value) && std::fabs(value) > 0x1p-102F) {
      ASSERT_EQ(bytes_of(value), word(bits)) << "seed 5";
    }
    char text[33];
    float decoded = 7;
    const int result = sbinary(text, reinterpret_cast<const std::uint8_t*>(&bits), 32, &decoded);
    ASSERT_EQ(read_binary(text, 32), bits);
    ASSERT_EQ(decoded, std::isfinite(value) ? value : decoded);
    ASSERT_EQ(result, std::isnan(value) ? 1 : 0);
  }
}

TEST(AuCodec, Binary16AndTheOddPatterns) {
  struct Case {
    int width;
    std::uint32_t bits;
    float value;  // 7: left alone
  };
  for (const Case& c : {Case{16, 0x3c00, 1}, Case{16, 0xc100, -2.5}, Case{16, 0x0001, 0x1p-24F},
                        Case{16, 0xfc00, -0x1p23F}, Case{16, 0x7c01, 7}, Case{16, 0x7bff, 65504},
                        Case{32, 0x7f800000, 0x1p127F}, Case{32, 0xffc00000, 7}}) {
    char text[33];
    float value = 7;
    const std::string bytes = word(c.bits);
    const auto* const in = reinterpret_cast<const std::uint8_t*>(bytes.data());
    EXPECT_EQ(sbinary(text, in, c.width, &value), c.value == 7 ? 1 : 0);
    EXPECT_EQ(value, c.value) << c.bits;
    std::array<std::uint8_t, 2> half = {};
    build_binary16(value, half);
    if (c.width == 16 && std::fabs(value) <= 65504 && value != 7) {
      EXPECT_EQ(half[0] | half[1] << 8, static_cast<int>(c.bits));
    }
  }
}

// A file with one word for every field, then samples.
std::string au(std::uint32_t length, int encoding, const std::string& samples) {
  return "dns." + word(length) + word(0x00ffffff) + word(static_cast<std::uint32_t>(encoding)) +
         word(44100) + word(1) + "AudacityBlockFile112" + std::string(24, '\0') + samples;
}

std::string cut(const std::string& file, double start, double end, std::string* printed = nullptr) {
  write_file("in.au", file);
  const std::string text = printed_by([&] { cut_part("in.au", "out.res", start, end); });
  if (printed != nullptr) *printed = text;
  return read_file("out.res");
}

TEST(AuFile, WhatIsWritten) {
  const TemporaryDirectory directory;
  write_file("a.res", "0 inf\n1 -inf\n2 nan\n3 1\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(make_au_file("a.res", "a.au"), 0); }), "make_au_file\n");
  const std::string header = au(3128, 6, "").substr(0, 44) + word(0xbf800000) + word(0x3f800000) +
                             word(0x3ea7cd03) + word(0xbf800000) + word(0x3f800000) +
                             word(0x3e992104) + std::string(3060, '\0');
  EXPECT_EQ(read_file("a.au"),
            header + word(0x7f7fffff) + word(0xff7fffff) + word(0xff7fffff) + word(0x3f800000));
  EXPECT_EQ(printed_by([] { EXPECT_EQ(make_au_file("none", "a.au"), 1); }),
            "make_au_file\nmake_au_file. no file none\n");
  EXPECT_EQ(read_file("a.au"), header);
  std::filesystem::create_symlink("a.res", "link.au");
  printed_by([] { EXPECT_EQ(make_au_file("a.res", "link.au"), 1); });
  EXPECT_EQ(read_file("a.res").size(), 23U) << "one file is not written over itself";
}

TEST(AuFile, ThereAndBack) {
  const TemporaryDirectory directory;
  literal::write("a.res", sine_in_noise(110'000, 20'000, 1));
  printed_by([] {
    EXPECT_EQ(make_au_file("a.res", "a.au"), 0);
    EXPECT_EQ(cut_part("a.au", "b.res", 0, 100), 0);
    EXPECT_EQ(cut_part("a.au", "part.res", 1.9, 2.37), 0);
  });
  EXPECT_EQ(literal::read("a.res", 110'000), literal::read("b.res", 110'000));
  const std::string part = read_file("part.res");
  EXPECT_TRUE(part.starts_with("83790 "));
  EXPECT_EQ(std::count(part.begin(), part.end(), '\n'), 104516 - 83790 + 1);
  EXPECT_NE(part.find("\n104516 "), std::string::npos);
}

TEST(AuFile, Encodings) {
  const TemporaryDirectory directory;
  const std::string floats = word(0x3f000000) + word(0x7fc00000) + word(0x7f800000);
  EXPECT_EQ(cut(au(68, 6, floats), 0, 1e30),
            "0 0.500000\n1 0.500000\n2 170141183460469231731687303715884105728.000000\n");
  EXPECT_EQ(cut(au(68, 3, word(0xffff0001) + word(0x80007fff)), 0, 1), "0 -1\n1 -32768\n");
  EXPECT_EQ(cut(au(68, -6, word(0xc1003c00) + word(0x7c013c00)), 0, 1),
            "0 -2.500000\n1 -2.500000\n");
  EXPECT_EQ(cut(au(68, 27, floats), 0, 1), "");
  EXPECT_EQ(cut(au(72, 6, word(1) + word(0x40000000)), 0, 1), "0 2.000000\n");
  EXPECT_EQ(cut(au(60, 6, word(0x40000000)), 0, 1), "2 2.000000\n");
  for (const auto& [start, end] :
       {std::pair(1.0, 0.0), std::pair<double, double>(NAN, 1), std::pair<double, double>(0, NAN)})
    EXPECT_EQ(cut(au(68, 6, floats), start, end), "");
  EXPECT_EQ(cut(au(0x7fffffff - 3, 6, floats), 0, 1), "");
  const std::uint8_t key = 'x';
  answer({&key, 1});
  std::string printed;
  EXPECT_EQ(cut(au(70, 6, word(1) + word(0x40000000)), 0, 1, &printed), "0 2.000000\n");
  EXPECT_EQ(printed, "cut_part wrong coding of au-header len=70\n");
}

TEST(AuFile, WhatIsRefused) {
  const TemporaryDirectory directory;
  const std::string good = au(68, 6, word(0x3f800000));
  std::string printed;
  for (std::size_t size = 0; size < 68; ++size) {
    EXPECT_EQ(cut(good.substr(0, size), 0, 1, &printed), "");
    ASSERT_EQ(printed, "not au-file\n") << size;
  }
  cut(".snd" + good.substr(4), 0, 1, &printed);
  EXPECT_EQ(printed, "not au-file\n");
  write_file("in.au", good);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(cut_part("in.au", "in.au", 0, 1), 1); }), "not au-file\n");
  EXPECT_EQ(read_file("in.au"), "");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(cut_part("none", "x", 0, 1), 1); }), "no file none\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(cut_part("in.au", "no/x", 0, 1), 1); }), "no file no/x\n");
}

}  // namespace
}  // namespace torve
