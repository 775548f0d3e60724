// The pictures of the guide: a session with each tool, photographed. Not a test, although it shares
// the tests' ways; scripts/screenshots runs it and says where the pictures go.

#include <cstdlib>
#include <stdexcept>

#include "desktop/diagram.hpp"
#include "desktop/tools.hpp"

namespace torve::desktop {
namespace {

namespace fs = std::filesystem;

constexpr Area icon_bar = {0, 550, 318, 50};

class Guide : public DiagramEditor {
 protected:
  Guide() {
    const char* folder = std::getenv("TORVE_PICTURES");
    if (folder == nullptr) throw std::runtime_error("TORVE_PICTURES does not name a folder");
    pictures_ = folder;
  }
  void SetUp() override { start(); }

  void photograph(const std::string& name) { write_ppm(screenshot(), pictures_ / (name + ".ppm")); }
  void photograph(const std::string& name, const Area& area) {
    write_ppm(cut(screenshot(), area), pictures_ / (name + ".ppm"));
  }
  void photograph(const std::string& name, const Tool& tool) {
    photograph(name, Area{tool.x, tool.y, tool.width, menu_height});
  }

  [[nodiscard]] const fs::path& pictures() const { return pictures_; }

 private:
  fs::path pictures_;
};

TEST_F(Guide, start) {
  photograph("start");
  photograph("icons", icon_bar);
}

TEST_F(Guide, plot) {
  open(plot_tool);
  photograph("plot-menu", plot_tool);
  edit(plot_tool, 0, 33, "0.5");
  edit(plot_tool, 0, 23, "1");
  edit(plot_tool, 0, 12, "8800");
  photograph("edited", plot_tool);
  run(plot_tool, 0);
  edit(plot_tool, 1, 12, "8800");
  run(plot_tool, 1);
  photograph("plot");
}

TEST_F(Guide, match) {
  open(plot_tool);
  for (const auto& [column, text] : {std::pair{33, "0.02"}, {23, "1"}})
    edit(plot_tool, 0, column, text);
  edit(plot_tool, 2, 12, "all");
  edit(plot_tool, 3, 27, "1000");
  run(plot_tool, 3);
  photograph("match");
}

TEST_F(Guide, print) {
  open(print_tool);
  photograph("print-menu", print_tool);
  run(print_tool, 0);
  fs::copy_file(folder() / "plot1.eps", pictures() / "print.eps",
                fs::copy_options::overwrite_existing);
}

TEST_F(Guide, read) {
  open(read_tool);
  photograph("read-menu", read_tool);
  run(read_tool, 2);
  fs::copy_file(folder() / "figure.gif", pictures() / "figure.gif",
                fs::copy_options::overwrite_existing);
}

TEST_F(Guide, write) {
  open(write_tool);
  photograph("write-menu", write_tool);
}

TEST_F(Guide, correlate) {
  open(correlate_tool);
  photograph("correlate-menu", correlate_tool);
  run(correlate_tool, 1);
  run(correlate_tool, 0);
  photograph("correlate");
}

TEST_F(Guide, spectrum) {
  open(spectrum_tool);
  photograph("spectrum-menu", spectrum_tool);
  edit(spectrum_tool, 1, 47, "20000");
  run(spectrum_tool, 1);
  run(spectrum_tool, 2);
  open(read_tool);
  edit(read_tool, 0, 54, "2");
  run(read_tool, 0);
  photograph("spectrum");
}

/// In a folder without signals, so that the sheet is white.
class EmptySheet : public Guide {
 protected:
  void SetUp() override {
    for (const char* name : {"bhld1.res", "bhld2.res", "compar3.res"})
      fs::remove(folder() / name);
    start();
  }
};

TEST_F(EmptySheet, network) {
  open_palette({400, 500});
  draw_network();
  photograph("network");
  const Tool cpu = open_properties(cpu_head);
  photograph("node-menu", Area{cpu.x - 40, cpu.y - 40, cpu.width + 80, 180});
  close(cpu);
  choose(PaletteLine::files);
  photograph("diagram-files", Area{diagram_files.x, 0, 600, 160});
  choose(PaletteLine::leave);
  choose(FilesLine::print);
  fs::copy_file(folder() / "figure.eps", pictures() / "network-eps.eps",
                fs::copy_options::overwrite_existing);
}

}  // namespace
}  // namespace torve::desktop
