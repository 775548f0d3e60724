// AU files: the codec, the files, and the report on one.

#include <bit>
#include <functional>
#include <poll.h>
#include <pty.h>
#include <random>
#include <sys/wait.h>
#include <termios.h>
#include <utmp.h>

#include "app/signal/au_codec.hpp"
#include "app/signal/au_file.hpp"
#include "app/signal/report.hpp"
#include "bench/signals.hpp"
#include "fuzz/memory_file.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

std::string word(std::uint32_t value) {
  const auto bytes = std::bit_cast<std::array<char, 4>>(value);
  return {bytes.begin(), bytes.end()};
}

std::uint32_t coded(float value) {
  std::array<std::uint8_t, 4> bytes = {};
  build_binary32(value, bytes);
  return std::bit_cast<std::uint32_t>(bytes);
}

float decoded(std::uint32_t bits, int width) {
  char text[33];
  float value = NAN;  // stays when there is none
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&bits);
  const int result = sbinary(text, bytes, width, &value);
  EXPECT_EQ(result != 0, std::isnan(value)) << bits;
  EXPECT_EQ(read_binary(text, width), bits);
  return value;
}

TEST(AuCodec, Binary32) {
  const std::pair<float, std::uint32_t> cases[] = {
      {0.1F, 0x3dcccccd},    {-2.5F, 0xc0200000},      {0x1.fffffep127F, 0x7f7fffff},
      {0x1p-102F, 0},        {-INFINITY, 0xff7fffff},  {-0.0F, 0},
      {0x1p-127F, 0x400000}, {0x1.8p-102F, 0x0cc00000}};
  for (const auto& [value, bits] : cases)
    EXPECT_EQ(coded(value), bits) << value;
  EXPECT_EQ(decoded(0x7f800000, 32), 0x1p127F);
  std::mt19937 random(5);
  for (int i = 0; i < 100'000; ++i) {
    const auto bits = static_cast<std::uint32_t>(random());
    const float value = std::bit_cast<float>(bits);
    const float back = decoded(bits, 32);
    if (std::isfinite(value)) {
      ASSERT_EQ(back, value);
      ASSERT_TRUE(coded(value) == bits || std::fabs(value) <= 0x1p-102F) << bits;
    }
  }
}

TEST(AuCodec, Binary16) {
  for (std::uint32_t bits = 0; bits < 0x10000; ++bits) {
    const float value = decoded(bits, 16);
    std::array<std::uint8_t, 2> half = {};
    build_binary16(value, half);
    // Below the smallest normal number two are rounded, and there is no negative 0.
    if (const auto size = bits & 0x7fff; size < 0x3fe || (size > 0x3ff && size < 0x7c00)) {
      ASSERT_EQ(std::bit_cast<std::uint16_t>(half), bits == 0x8000 ? 0 : bits);
    }
  }
  EXPECT_EQ(decoded(0xfc00, 16), -0x1p23F);
}

// A file with one word for every field, then samples.
std::string au(std::uint32_t length, int encoding, const std::string& samples) {
  return "dns." + word(length) + word(0x00ffffff) + word(static_cast<std::uint32_t>(encoding)) +
         word(44100) + word(1) + "AudacityBlockFile112" + std::string(24, '\0') + samples;
}

class AuFile : public ::testing::Test {
 protected:
  AuFile() {
    write_file("a.res", "0 0.5\n1 -2\n2 nan\n3 inf\n");
    printed_ = printed_by([] { EXPECT_EQ(make_au_file("a.res", "a.au"), 0); });
  }
  std::string cut(const std::string& file, double start, double end) {
    write_file("in.au", file);
    printed_ = printed_by([&] { cut_part("in.au", "out.res", start, end); });
    return read_file("out.res");
  }

  std::string printed_;
  TemporaryDirectory directory_;
};

TEST_F(AuFile, WhatIsWritten) {
  EXPECT_EQ(printed_, "make_au_file\n");
  const std::string header = au(3128, 6, "").substr(0, 44) + word(0xbf800000) + word(0x3f800000) +
                             word(0x3ea7cd03) + word(0xbf800000) + word(0x3f800000) +
                             word(0x3e992104) + std::string(3060, '\0');
  EXPECT_EQ(read_file("a.au"),
            header + word(0x3f000000) + word(0xc0000000) + word(0xc0000000) + word(0x7f7fffff));
  EXPECT_EQ(printed_by([] { EXPECT_EQ(make_au_file_32("a.res", "half.au"), 0); }),
            "make_au_file_32\n");
  std::string halves("\0\xbc\0\x3c\x3e\x35\0\xbc\0\x3c\xc9\x34", 12);
  halves.append(1530, '\0');
  EXPECT_EQ(read_file("half.au"), header.substr(0, 44) + halves + read_file("a.au").substr(3128));
  EXPECT_EQ(printed_by([] { EXPECT_EQ(make_au_file("none", "a.au"), 1); }),
            "make_au_file\nmake_au_file. no file none\n");
  EXPECT_EQ(read_file("a.au"), header);
  std::filesystem::create_symlink("a.res", "link.au");
  printed_by([] { EXPECT_EQ(make_au_file("a.res", "link.au"), 1); });
  EXPECT_EQ(read_file("a.res").size(), 23U) << "one file is not written over itself";
}

TEST_F(AuFile, WhatIsCut) {
  const std::string floats = word(0x3f000000) + word(0x7fc00000) + word(0x7f800000);
  const std::string two = word(0x40000000);
  constexpr double one = 1.0000001 / 44100;  // of the 32-bit samples
  std::string nans;
  while (nans.size() < 80'000)
    nans += word(0x7fc07fc0);
  const struct {
    std::string file;
    double start, end;
    const char* values;
  } cases[] = {
      {au(68, 6, floats), 0, 1e30,
       "0 0.500000\n1 0.500000\n2 170141183460469231731687303715884105728.000000\n"},
      {au(68, 3, word(0xffff0001) + word(0x80007fff)), 0, 1, "0 -1\n1 -32768\n"},
      {au(68, -6, word(0xc1003c00) + word(0x7c013c00)), 0, 1, "0 -2.500000\n1 -2.500000\n"},
      {au(68, 27, floats), 0, 1, ""},
      {au(72, 6, word(1) + two), 0, 1, "0 2.000000\n"},
      {au(60, 6, two), 0, 1, "2 2.000000\n"},
      {au(70, 6, word(1) + two), 0, 1, "0 2.000000\n"},
      {au(68, 6, floats), one, 9, "1 0.500000\n2 170141183460469231731687303715884105728.000000\n"},
      {au(68, 6, word(0x40000000) + nans), 20'000 * one, 9, "20000 2.000000\n"},
      {au(68, 6, nans), 19'999 * one, 9, "19999 0.000000\n"},
      {au(68, -6, word(0x4000abcd) + nans), 20'000 * one, 9, "20000 2.000000\n"},
      {au(68, 3, floats + word(0x80007fff)), 5 * one, 1, "2 32640\n3 -32768\n"},
      {au(70, 3, word(1) + word(0x80007fff)), one, 1, "1 -32768\n"},
      {au(68, 6, floats), 1, 0, ""},
      {au(68, 6, floats), NAN, 1, ""},
      {au(68, 6, floats), 0, NAN, ""},
      {au(0x7fffffff - 3, 6, floats), 0, 1, ""},
  };
  for (const auto& c : cases) {
    const std::uint8_t key = 'x';
    answer({&key, 1});
    EXPECT_EQ(cut(c.file, c.start, c.end), c.values);
    const bool is_odd = c.file[4] % 4 != 0;
    EXPECT_EQ(printed_, is_odd ? "cut_part wrong coding of au-header len=70\n" : "");
  }
}

TEST_F(AuFile, WhatIsRefused) {
  const std::string good = au(68, 6, word(0x3f800000));
  for (const std::string& bad : {good.substr(0, 67), ".snd" + good.substr(4)}) {
    EXPECT_EQ(cut(bad, 0, 1), "");
    EXPECT_EQ(printed_, "not au-file\n");
  }
  write_file("in.au", good);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(cut_part("in.au", "no/x", 0, 1), 1); }), "no file no/x\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(cut_part("in.au", "in.au", 0, 1), 1); }), "not au-file\n");
  EXPECT_EQ(read_file("in.au"), "");
}

const std::string question = "...want to skip the header block... (y/n)\n";

std::string answered(const std::string& answers, const std::function<void()>& listing) {
  answer({reinterpret_cast<const std::uint8_t*>(answers.data()), answers.size()});
  return printed_by(listing);
}

std::string report(const std::string& answers) {
  return answered(answers, [] { EXPECT_EQ(analyse("a.au"), 0); });
}

TEST_F(AuFile, IsReported) {
  const std::string header =
      "0 AU-file header: dns.\n4 Data offset (=header length)=3128\n"
      "8 Data size (not known=FFFFFF00) 00000000111111111111111111111111\n"
      "12 Encoding=6\n16 Sampling rate=44100\n20 Channels=1\n24 Name=AudacityBlockFile112\n"
      "44 Min=-1.000000 line=10111111100000000000000000000000\n"
      "48 Max=1.000000 line=00111111100000000000000000000000\n"
      "52 RMS=0.327736 line=00111110101001111100110100000011\n"
      "56 Min=-1.000000\n60 Max=1.000000\n64 RMS=0.299080\n" +
      question;
  const std::pair<const char*, std::string> answers[] = {
      {"", ""},  // the end of the input is an answer, too
      {"yq", "3128 f1=0.500000\n"},
      {"y..", "3128 f1=0.500000\n3132 f1=-2.000000\n3136 f1=-2.000000\n"},
      {"n.qq", "68 0000000000000000 0.000000\n70 0000000000000000 0.000000\n72 f1=0.000000\n"}};
  for (const auto& [keys, rest] : answers)
    EXPECT_EQ(report(keys), header + rest);
  const std::string all = report("n" + std::string(2000, '.'));
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 14 + 1530 + 4);
}

TEST_F(AuFile, OfOtherEncodingsIsReported) {
  const auto samples = [](int encoding, const std::string& bytes) {
    write_file("a.au", au(3128, encoding, "").substr(0, 44) + bytes);
    const std::string text = report("y......");
    return text.substr(text.find("24 Name") + 29);
  };
  // No summary: 3060 bytes from 44 on are skipped.
  EXPECT_EQ(samples(3, std::string(3060, 0) + word(0xffff0101)), question + "3104 257\n3106 -1\n");
  EXPECT_EQ(samples(7, std::string(4000, 0)), question);
  const std::string text = samples(-6, word(0x40000000) + std::string(3080, 0) + word(0xc0003c00));
  EXPECT_TRUE(text.starts_with("44 Ch1 Min=0.000000\n44 Ch2 Min=2.000000\n48 Ch1 Max=0.000000\n"));
  EXPECT_TRUE(text.ends_with(question + "3130 f1=1.000000\n3130 f2=-2.000000\n")) << text;
  for (const char* name : {"none", ".", "a.res"})
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(analyse(name), 1); }), "not au-file\n");
}

TEST_F(AuFile, DifferencesAreListedAsLongAsBothGoOn) {
  write_file("left", std::string("\0\x3c\0\x3c\0\0\0\xc0", 8));
  write_file("right", std::string("\0\x3c\0\xbc\0\0\0\x38more", 12));
  const std::string first =
      "Difference at 2\nin left is  0011110000000000  1.000000\n"
      "in right is  1011110000000000  -1.000000\n";
  const std::string second =
      "Difference at 6\nin left is  1100000000000000  -2.000000\n"
      "in right is  0011100000000000  0.500000\n";
  const auto listed = [](const char* answers, const char* path) {
    return answered(answers, [path] { EXPECT_EQ(find_differences("left", path), 0); });
  };
  EXPECT_EQ(listed("q.", "right"), first);
  EXPECT_EQ(listed("...", "right"), first + second);
  EXPECT_EQ(listed("...", "left") + listed("...", "none"), "");
}

// Reads what the terminal shows until it ends with `text`.
void expect_text(int terminal, const std::string& text) {
  std::string shown;
  char byte = 0;
  pollfd waiting = {terminal, POLLIN, 0};
  while (!shown.ends_with(text) && poll(&waiting, 1, 10'000) > 0 && read(terminal, &byte, 1) == 1)
    shown += byte;
  EXPECT_TRUE(shown.ends_with(text)) << shown;
}

TEST_F(AuFile, IsReportedOneKeyALineOnATerminal) {
  for (const bool is_killed : {false, true}) {
    int terminal = -1, line = -1;
    ASSERT_EQ(openpty(&terminal, &line, nullptr, nullptr, nullptr), 0);
    termios before = {}, after = {};
    tcgetattr(line, &before);
    const pid_t child = fork();
    if (child == 0) {
      alarm(20);
      login_tty(dup(line));
      stdin = fdopen(0, "r");
      stdout = fdopen(1, "w");
      std::_Exit(analyse("a.au"));
    }
    expect_text(terminal, "(y/n)\r\n");
    EXPECT_EQ(write(terminal, "y", 1), 1);
    expect_text(terminal, "3128 f1=0.500000\r\n");
    EXPECT_EQ(is_killed ? kill(child, SIGTERM) + 1 : write(terminal, "q", 1), 1);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(is_killed ? WTERMSIG(status) : status, is_killed ? SIGTERM : 0);
    tcgetattr(line, &after);
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    close(terminal), close(line);
  }
}

}  // namespace
}  // namespace torve
