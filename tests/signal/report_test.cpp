#include "app/signal/report.hpp"

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <utmp.h>

#include "app/signal/au_file.hpp"
#include "bench/signals.hpp"
#include "fuzz/memory_file.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

const std::string question = "...want to skip the header block... (y/n)\n";

std::string report(const std::string& answers) {
  answer({reinterpret_cast<const std::uint8_t*>(answers.data()), answers.size()});
  return printed_by([] { EXPECT_EQ(analyse("a.au"), 0); });
}

class ReportTest : public ::testing::Test {
 protected:
  ReportTest() {
    write_file("a.res", "0 0.5\n1 -2\n2 3\n");
    printed_by([] { EXPECT_EQ(make_au_file("a.res", "a.au"), 0); });
  }
  TemporaryDirectory directory_;
};

TEST_F(ReportTest, AnOwnFile) {
  const std::string header =
      "0 AU-file header: dns.\n4 Data offset (=header length)=3128\n"
      "8 Data size (not known=FFFFFF00) 00000000111111111111111111111111\n"
      "12 Encoding=6\n16 Sampling rate=44100\n20 Channels=1\n24 Name=AudacityBlockFile112\n"
      "44 Min=-1.000000 line=10111111100000000000000000000000\n"
      "48 Max=1.000000 line=00111111100000000000000000000000\n"
      "52 RMS=0.327736 line=00111110101001111100110100000011\n"
      "56 Min=-1.000000\n60 Max=1.000000\n64 RMS=0.299080\n" +
      question;
  EXPECT_EQ(report(""), header) << "the end of the input is an answer, too";
  EXPECT_EQ(report("yq"), header + "3128 f1=0.500000\n");
  EXPECT_EQ(report("y..."), header + "3128 f1=0.500000\n3132 f1=-2.000000\n3136 f1=3.000000\n");
  EXPECT_EQ(report("n.qq"), header +
                                "68 0000000000000000 0.000000\n"
                                "70 0000000000000000 0.000000\n72 f1=0.000000\n");
  const std::string all = report("n" + std::string(2000, '.'));
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 14 + 1530 + 3);
}

TEST_F(ReportTest, OtherEncodings) {
  const std::string header = read_file("a.au").substr(0, 44);
  const auto with_encoding = [&](const char* encoding, const std::string& rest) {
    write_file("a.au", header.substr(0, 12) + std::string(encoding, 4) + header.substr(16) + rest);
    const std::string text = report("y......");
    return text.substr(text.find("24 Name") + 29);
  };
  // No summary: 3060 bytes from 44 on are skipped.
  EXPECT_EQ(with_encoding("\3\0\0\0", std::string(3060, 0) + "\1\1\377\377"),
            question + "3104 257\n3106 -1\n");
  EXPECT_EQ(with_encoding("\7\0\0\0", std::string(4000, 0)), question);
  const std::string summary = "44 Ch1 Min=0.000000\n44 Ch2 Min=2.000000\n48 Ch1 Max=0.000000\n";
  const std::string words(std::string("\0\0\0\100", 4));
  const std::string text = with_encoding(
      "\372\377\377\377", words + std::string(3080, 0) + std::string("\0\74\0\300", 4));
  EXPECT_EQ(text.substr(0, summary.size()), summary);
  EXPECT_TRUE(text.ends_with(question + "3130 f1=1.000000\n3130 f2=-2.000000\n")) << text;
}

TEST_F(ReportTest, WhatIsRefused) {
  write_file("short", read_file("a.au").substr(0, 67));
  for (const char* name : {"none", ".", "a.res", "short"}) {
    const std::string text = printed_by([&] { EXPECT_EQ(analyse(name), 1); });
    EXPECT_TRUE(text.ends_with("not au-file\n")) << name;
  }
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

TEST_F(ReportTest, OneKeyALineOnATerminal) {
  for (const bool is_killed : {false, true}) {
    int terminal = -1;
    int line = -1;
    ASSERT_EQ(openpty(&terminal, &line, nullptr, nullptr, nullptr), 0);
    termios before = {};
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
    ASSERT_EQ(write(terminal, "y", 1), 1);
    expect_text(terminal, "3128 f1=0.500000\r\n");
    if (is_killed) {
      kill(child, SIGTERM);
    } else {
      ASSERT_EQ(write(terminal, "q", 1), 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(is_killed ? WTERMSIG(status) : status, is_killed ? SIGTERM : 0);
    termios after = {};
    tcgetattr(line, &after);
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    close(terminal);
    close(line);
  }
}

}  // namespace
}  // namespace torve
