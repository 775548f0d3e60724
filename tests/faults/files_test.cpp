// What a full disk, a directory that nobody may write to and a signal do to files that hold good
// data: nothing.

#include <csignal>
#include <filesystem>
#include <functional>
#include <iterator>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

#include "app/signal/au_file.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/console.hpp"
#include "base/new_file.hpp"
#include "base/output_file.hpp"
#include "diagram/diagram_file.hpp"
#include "diagram/history.hpp"
#include "diagram/model/diagram_text.hpp"
#include "eps/eps_stream.hpp"
#include "gif/gif_writer.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

void write_signal(const std::string& name, int samples) {
  std::string text;
  for (int i = 0; i < samples; ++i)
    text += std::to_string(i) + " " + std::to_string((i * 7919) % 2003 - 1000) + "\n";
  write_file(name, text);
}

int print_something(const char* name) {
  FilePtr form = open_eps(name, "psexampl.dat");
  if (!form) return 1;
  for (int i = 0; i < 2000; ++i)
    write_eps_segment(i, 1, 2, i, 600);
  return close_eps(std::move(form));
}

int match(const char* name) {
  float mean = 0, scale = 1;
  int offset = 0;
  return my_correlation("a.res", "b.res", name, &mean, &offset, &scale, 1, 0, "all");
}

constexpr int many_figures = 300;

int save_many_figures(const char* name) {
  if (firstvobj == nullptr) {
    for (int i = 0; i < many_figures; ++i) {
      Vobj* figure = create_vector_obj(FigureKind::arrow);
      figure->phase = phase_on_canvas | phase_draw;
      figure->x1 = figure->y1 = 100;
      figure->x2 = figure->y2 = 200;
    }
  }
  return save_diagram(name);
}

struct Writer {
  const char* what;
  int (*write)(const char* name);
};
const Writer writers[] = {
    {"AU", [](const char* name) { return make_au_file("a.res", name); }},
    {"cut", [](const char* name) { return cut_part("good.au", name, 0, 9); }},
    {"EPS", print_something},
    {"GIF", [](const char* name) { return writeGIF1(name, 0, 0, 799, 599); }},
    {"diagram", save_many_figures},
    {"match", match},
    {"spectrum", [](const char* name) { return power_spectrum("a.res", name, "all"); }},
    {"band",
     [](const char* name) { return filter_spectrum(name, "x.res", 100, 200, filter_band_pass); }},
};

class Faults : public ScreenTest {
 protected:
  Faults() {
    set_up_console();
    EXPECT_TRUE(allocate_work_buffer());
    write_signal("a.res", 10500), write_signal("b.res", 10500);
    EXPECT_EQ(make_au_file("a.res", "good.au"), 0);
    EXPECT_EQ(power_spectrum("a.res", "a.spe", "all"), 0);
  }
  ~Faults() override { release_work_buffer(); }

  TemporaryDirectory directory_;
};

// The status of `action` in a process of its own.
int in_a_process(const std::function<int()>& action) {
  const pid_t child = fork();
  if (child == 0) _exit(action());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// How many files there are with names that begin like this one.
int relatives_of(const std::string& name) {
  const std::filesystem::path path(name);
  const auto is_one = [&path](const auto& entry) {
    return entry.path().filename().string().starts_with(path.filename().string());
  };
  const std::filesystem::directory_iterator entries(path.parent_path());
  return static_cast<int>(std::count_if(begin(entries), end(entries), is_one));
}

TEST_F(Faults, OtherNamesOfAFileStayItsNames) {
  write_file("old", "good");
  chmod("old", 0640);
  std::filesystem::create_hard_link("old", "twin");
  std::filesystem::create_symlink("old", "link");
  for (const char* name : {"link", "twin"}) {
    write_file("old", "good");
    EXPECT_EQ(save_many_figures(name), 0);
    EXPECT_GT(read_file("old").size(), 1000U) << name;
    EXPECT_EQ(read_file("twin"), read_file("old"));
  }
  EXPECT_TRUE(std::filesystem::is_symlink("link"));
  EXPECT_EQ(static_cast<int>(std::filesystem::status("old").permissions()), 0640);
  OutputFile without_target("twin");
  without_target.write("new");
  std::filesystem::remove("twin");
  EXPECT_FALSE(without_target.finish());
}

TEST_F(Faults, WhatIsEmptiedIsKept) {
  write_file("few.res", "0 1.0\n");
  const struct {
    const char* what;
    std::function<void(const std::string&)> action;
    std::size_t left = 0;  // bytes
  } emptied[] = {
      {"cut onto itself", [](const std::string& name) { cut_part(name, name, 0, 1); }},
      {"cut no AU", [](const std::string& name) { cut_part("few.res", name, 0, 1); }},
      {"cut nothing", [](const std::string& name) { cut_part("good.au", name, 9, 8); }},
      {"no signal", [](const std::string& name) { make_au_file("none", name); }, au_header_length},
      {"few to match",
       [](const std::string& name) {
         float mean = 0, scale = 1;
         int offset = 0;
         EXPECT_EQ(my_correlation("a.res", "few.res", name, &mean, &offset, &scale, 1, 0, "all"),
                   1);
       }},
      {"few bins", [](const std::string& name) { power_spectrum("few.res", name, "all"); }},
  };
  EXPECT_EQ(keep_content("none", Keeping::copy), "");
  const std::string good = read_file("good.au");
  for (const auto& [what, action, left] : emptied) {
    for (const std::string where : {"alone", "twice", "link"}) {
      SCOPED_TRACE(what + (" " + where));
      const TemporaryDirectory directory;
      std::filesystem::copy(directory_.path() / "few.res", ".");
      for (const char* needed : {"a.res", "good.au"})
        std::filesystem::create_symlink(directory_.path() / needed, needed);
      write_file("old", good);
      if (where == "twice") std::filesystem::create_hard_link("old", "twin");
      if (where == "link") std::filesystem::create_symlink("old", "name");
      action(where == "link" ? "name" : "old");
      EXPECT_EQ(read_file("old.bak"), good);
      EXPECT_EQ(read_file(where == "twice" ? "twin" : "old").size(), left);
      write_file("old", "other");
      action("old");
      EXPECT_EQ(read_file("old.bak"), good);
      EXPECT_EQ(read_file("old.bak.2"), "other");
      EXPECT_EQ(relatives_of(std::filesystem::absolute("old")), 3);
    }
  }
}

TEST_F(Faults, ADiagramIsRescuedSomewhere) {
  const std::string home = std::filesystem::absolute("home"), nowhere = home + "/no";
  std::filesystem::create_directories("home/a.vob");
  write_file("home/b.vob", "earlier");
  ASSERT_EQ(mkfifo("home/b.vob.2", 0600), 0);
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{home + "/c.vob", home + "/d.vob"}, home + "/c.vob"},
      {{home + "/a.vob"}, home + "/a.vob.2"},
      {{home + "/b.vob"}, home + "/b.vob.3"},
      {{nowhere + "/e.vob", "/dev/full/e.vob", home + "/e.vob"}, home + "/e.vob"},
      {{nowhere + "/e.vob"}, ""}};
  for (const auto& [places, found] : cases) {
    EXPECT_EQ(write_new_file(places, "text"), found);
    if (found.empty()) continue;
    EXPECT_EQ(read_file(found), "text");
    EXPECT_EQ(static_cast<int>(std::filesystem::status(found).permissions()), 0600);
  }
  EXPECT_EQ(read_file("home/b.vob"), "earlier");
  EXPECT_EQ(save_many_figures("figure.vob"), 0);
  ASSERT_EQ(new_diagram(), 0);
  undo_ope();
  chmod(".", 0555);
  EXPECT_EQ(in_a_process([] {
              // Without a home, as the user database has it, and in a directory of somebody else.
              if (geteuid() == 0 && setuid(65534) != 0) return 2;
              const std::string said = printed_by(rescue_diagram);
              const std::string name =
                  said.substr(said.find('/'), said.find('\n') - said.find('/'));
              const bool is_whole = read_file(name) == read_file("figure.vob");
              return is_whole && std::filesystem::remove(name) ? 0 : 1;
            }),
            0);
  chmod(".", 0755);
}

TEST_F(Faults, AFullDiskLeavesWhatWasThere) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  for (const Writer& writer : writers) {
    write_file("old", "good data");
    // No file may grow beyond this; what a full disk says, said for every file.
    EXPECT_EQ(in_a_process([&writer] {
                const rlimit limit = {1024, 1024};
                setrlimit(RLIMIT_FSIZE, &limit);
                return writer.write("old") != 0 && writer.write("new") != 0 ? 0 : 1;
              }),
              0)
        << writer.what;
    EXPECT_TRUE(read_file("old") == "good data") << writer.what;
    EXPECT_FALSE(std::filesystem::exists("new")) << writer.what;
    EXPECT_EQ(writer.write("old"), 0) << writer.what;
    EXPECT_NE(writer.write("/dev/full"), 0) << writer.what;
    EXPECT_NE(writer.write("pipe"), 0) << writer.what << " waits for nobody";
  }
}

// TORVE_SMALL_DISK names a directory of a file system that may be filled up.
TEST_F(Faults, ASmallDiskLeavesWhatWasThere) {
  const char* disk = std::getenv("TORVE_SMALL_DISK");
  if (disk == nullptr) GTEST_SKIP() << "docs/reliability.md says how to give it a small disk";
  const std::string old_file = std::string(disk) + "/old", filler = std::string(disk) + "/filler";
  for (const Writer& writer : writers) {
    write_file(old_file, "good data");
    write_file(filler, std::string(std::filesystem::space(disk).free, 'x'));
    EXPECT_NE(writer.write(old_file.c_str()), 0) << writer.what;
    EXPECT_EQ(read_file(old_file), "good data") << writer.what;
    std::filesystem::remove(filler);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(disk), {}), 1) << writer.what;
    EXPECT_EQ(writer.write(old_file.c_str()), 0) << writer.what;
  }
}

TEST_F(Faults, ADirectoryForReadingOnlyLeavesWhatWasThere) {
  write_file("old", "good data");
  chmod("old", 0444), chmod(".", 0555);
  for (const Writer& writer : writers) {
    EXPECT_EQ(in_a_process([&writer] {
                if (geteuid() == 0 && seteuid(65534) != 0) return 2;
                return writer.write("old") != 0 && writer.write("new") != 0 ? 0 : 1;
              }),
              0)
        << writer.what;
  }
  EXPECT_TRUE(read_file("old") == "good data");
  chmod(".", 0755);
}

// Writes `name` again and again, with "a" and with "b" in turn, until a signal comes.
int write_in_turns(const std::string& name, std::size_t size) {
  for (char letter = 'b';; letter = letter == 'a' ? 'b' : 'a') {
    OutputFile file(name);
    for (std::size_t done = 0; done < size; done += 1000)
      file.write(std::string(1000, letter));
    if (!file.finish()) return 1;
  }
}

// Whatever is written how: beside the file, into it because it has a second name, or because
// nothing can be made beside it.
TEST_F(Faults, ASignalMeetsTheOldFileOrTheNewOne) {
  constexpr std::size_t size = 3'000'000;
  std::mt19937 random(1);
  const std::string last = "file" + std::to_string(getpid());
  for (const char* where : {"alone", "twice", "locked"}) {
    std::filesystem::create_directory(where);
    const std::string name = where + ("/" + last);
    write_file(name, std::string(size, 'a'));
    if (where == std::string("twice")) std::filesystem::create_hard_link(name, "twice/twin");
    chmod(name.c_str(), 0666), chmod(".", 0755), chmod(where, *where == 'l' ? 0555 : 0777);
    for (int i = 0; i < 20; ++i) {
      const int signal = i % 2 == 0 ? SIGTERM : SIGINT;
      const pid_t child = fork();
      if (child == 0)
        _exit(seteuid(geteuid() == 0 ? 65534 : geteuid()) + write_in_turns(name, size));
      std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 20000));
      kill(child, signal);
      int status = 0;
      waitpid(child, &status, 0);
      EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << where;
      const std::string now = read_file(name);
      EXPECT_TRUE(now.size() == size && now == std::string(size, now[0])) << where;
      EXPECT_EQ(relatives_of(name), 1) << where;
      EXPECT_EQ(relatives_of("/tmp/" + last), 0) << where;
    }
    chmod(where, 0755);
  }
}

TEST_F(Faults, AFileDoesNotBecomeAClosedStream) {
  write_file("other", "");
  EXPECT_EQ(in_a_process([] {
              close(1);
              set_up_console();
              const FilePtr file = open_file("other", "r+");
              std::printf("a line\n"), std::fflush(stdout);
              return 0;
            }),
            0);
  EXPECT_EQ(read_file("other"), "");
}

}  // namespace
}  // namespace torve
