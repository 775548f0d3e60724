// A workbench without a window for the fuzz targets, in a directory of its own in which the files
// that a target asks for are files in memory.
#pragma once

#include <cstring>
#include <filesystem>
#include <vector>

#include "diagram/editor.hpp"
#include "dialogs/install.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "memory_file.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"

namespace torve {

/// No name of thirty characters leads out of a directory that lies this deep.
inline constexpr const char* deep_directory = "d/d/d/d/d/d/d/d/d/d/d/d/d/d/d/d";

class Stage {
 public:
  Stage() {
    silence();
    answer({});
    namespace fs = std::filesystem;
    std::string path = (fs::temp_directory_path() / "torve-fuzz.XXXXXX").string();
    root_ = mkdtemp(path.data());
    fs::create_directories(root_ / deep_directory);
    fs::current_path(root_ / deep_directory);
    defaultfont = 7;
    if (!create_screen_image() || init_font(7) + init_font2(label_font) != 0) std::abort();
    allocate_colours(allocate_true_colour);
    set_xcolor2();
    reset_screen_state();
    if (initPool(0, 0, 0, 0) != 0 || !allocate_staging() || init_win(0, 0) != 0) std::abort();
    install_dialogs();
    install_diagram();
    xxmax = 680;
    yymax = 599;
    if (init_engine(1) != 0) std::abort();
  }
  ~Stage() { std::filesystem::remove_all(root_); }
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  static void link(const char* name, const MemoryFile& file) {
    std::filesystem::create_symlink(file.name(), name);
  }

 private:
  std::filesystem::path root_;
};

/// The planes as they lie in memory: pixels would take the fuzzers most of their time.
inline const std::vector<std::uint8_t>& canvas() {
  static std::vector<std::uint8_t> copy;
  copy.assign(screen_block(), screen_block() + plane_bytes * screen_planes);
  return copy;
}

inline bool canvas_is(const std::vector<std::uint8_t>& copy) {
  return std::memcmp(copy.data(), screen_block(), copy.size()) == 0;
}

}  // namespace torve
