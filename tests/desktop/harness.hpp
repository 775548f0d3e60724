// The real program on an X server of its own, in a folder of its own, driven as a person would.
//
// No test sleeps: after an input, settle() asks the window for a sign of life, which the program
// gives when it has handled everything before and shows the result.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "desktop/picture.hpp"
#include "desktop/process.hpp"
#include "desktop/x_server.hpp"

namespace torve::desktop {

/// What colours of the program's table look like on the screen.
constexpr std::uint32_t white = 0xFCFCFC;
constexpr std::uint32_t black = 0x000000;

/// An icon of the bar: 43 x 43 pixels at x = 1 + 45 i.
constexpr Area icon_area(int i) {
  return {1 + 45 * i, 554, 43, 43};
}

class Desktop : public testing::Test {
 protected:
  Desktop();
  ~Desktop() override;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  /// Replaces the X server by one with another screen, before the program starts.
  void use_screen(const std::string& screen);
  /// Gives the program a copy of its installation; returns the copy's share/torve.
  std::filesystem::path use_copied_installation();
  /// Lets the program run without the rights of root, should the test have them.
  void use_ordinary_user() { ordinary_user_ = true; }
  /// What the program finds on its standard input.
  void use_input(const std::string& text);
  /// Starts the program without waiting for its window.
  void launch();
  /// Starts the program and waits until it has drawn its window. Throws when it does not, and
  /// so does settle(): nothing that follows would make sense.
  void start();

  void settle();
  void press(int x, int y, int button = 1);
  void release(int button = 1);
  void click(int x, int y, int button = 1);
  /// Every key waits until the one before has been handled: the program drops keys typed ahead.
  void key(unsigned long keysym);
  void type(const std::string& text);
  void close_window() { server_->ask_to_close(window_); }
  Picture screenshot() { return server_->screenshot(window_); }

  /// The status the program ends with; -1 when it does not end.
  [[nodiscard]] int exit_status();
  [[nodiscard]] std::string output() const;
  /// Whether this stands in the output.
  [[nodiscard]] testing::AssertionResult wrote(const std::string& text) const;
  [[nodiscard]] std::string errors() const;

  [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
  [[nodiscard]] XServer& server() { return *server_; }
  [[nodiscard]] WindowId window() const { return window_; }
  [[nodiscard]] bool running();

 private:
  void keep_evidence();

  std::filesystem::path home_;    // everything of this test
  std::filesystem::path folder_;  // the program's working directory
  std::filesystem::path program_;
  std::filesystem::path input_ = "/dev/null";
  std::unique_ptr<XServer> server_;
  std::unique_ptr<Process> process_;
  WindowId window_ = 0;
  bool ordinary_user_ = false;
};

}  // namespace torve::desktop
