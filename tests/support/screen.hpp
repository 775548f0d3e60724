// A screen image without a window, and a directory of its own, for tests that need one.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "display/colours.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/pixels.hpp"
#include "draw/rectangles.hpp"

namespace torve {

class ScreenTest : public ::testing::Test {
 protected:
  ScreenTest() {
    EXPECT_TRUE(create_screen_image());
    allocate_colours(allocate_true_colour);
    set_xcolor2();
    reset_screen_state();
    reset_input();
    clearwin(0, 0, screen_width, screen_height, white_colour);
  }
  ~ScreenTest() override { release_screen_image(); }
};

/// Works in an empty directory that goes when it does.
class TemporaryDirectory {
 public:
  TemporaryDirectory() : before_(std::filesystem::current_path()) {
    std::string path = (std::filesystem::temp_directory_path() / "torve.XXXXXX").string();
    path_ = mkdtemp(path.data());
    std::filesystem::current_path(path_);
  }
  ~TemporaryDirectory() {
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(path_);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path before_, path_;
};

inline std::string read_file(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void write_file(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary) << bytes;
}

/// How much of a random test is asked for in the environment.
inline unsigned asked(const char* variable, unsigned otherwise) {
  const char* number = std::getenv(variable);
  return number != nullptr ? static_cast<unsigned>(std::atoi(number)) : otherwise;
}

/// What `action` prints on standard output.
inline std::string printed_by(const std::function<void()>& action) {
  ::testing::internal::CaptureStdout();
  action();
  return ::testing::internal::GetCapturedStdout();
}

/// The pixel values of the whole screen, row by row.
inline std::vector<std::uint32_t> all_pixels() {
  std::vector<std::uint32_t> pixels(std::size_t{screen_width} * screen_height);
  read_pixels(whole_screen, pixels.data(), screen_width);
  return pixels;
}

}  // namespace torve
