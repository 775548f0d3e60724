// A queueing network is drawn, changed, kept, lost and read again.

#include "desktop/diagram.hpp"

#include <fstream>

namespace torve::desktop {
namespace {

constexpr std::uint32_t red = 0xFF0000;
constexpr Area drawing = {0, 24, 680, 500};

TEST_F(DiagramEditor, keeps_a_network) {
  for (const char* name : {"bhld1.res", "bhld2.res", "compar3.res"})
    std::filesystem::remove(folder() / name);
  start();
  open_palette({400, 500});
  const Picture bare = cut(screenshot(), drawing);
  draw_network();
  const Picture network = cut(screenshot(), drawing);
  EXPECT_TRUE(shows_text(network, 6, cpu_head.x - 10, cpu_head.y - 20 - drawing.y, "cpu", black));
  EXPECT_GT(count(network, {0, 0, drawing.width, drawing.height}, red), 150);

  choose(FilesLine::save);
  const std::string saved = read_file("figure.vob");
  EXPECT_NE(saved.find("name=\"cpu\""), std::string::npos);
  EXPECT_NE(saved.find("servers=2 exit_filter=0 ps_mode=3"), std::string::npos);
  choose(FilesLine::print);
  const std::filesystem::path ppm = folder() / "printed.ppm";
  const Picture printed =
      read_with({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dEPSCrop", "-sDEVICE=ppmraw",
                 "-r120", "-o", ppm.string(), (folder() / "figure.eps").string()},
                ppm);
  EXPECT_EQ(printed.width, 700);
  EXPECT_GT(count(printed, {0, 0, printed.width, printed.height}, 0), 2000);

  // The cpu moves with its name, a copy of the disk comes and both disks go.
  choose(PaletteLine::pointer);
  drag({300, 235}, {420, 330});
  choose(PaletteLine::pointer);
  run_figure_line({500, 235}, FigureLine::copy);
  choose(PaletteLine::pointer);
  run_figure_line({500, 235}, FigureLine::cut);
  EXPECT_NE(cut(screenshot(), drawing), network);
  choose(PaletteLine::undo);
  choose(FilesLine::read);
  EXPECT_EQ(cut(screenshot(), drawing), network);
  choose(FilesLine::save);
  EXPECT_EQ(read_file("figure.vob"), saved);

  // A menu over the figures and all of them gone beneath it.
  std::ofstream(folder() / "figure.vob") << "torve-diagram 1\n";
  const Tool cpu = open_properties(cpu_head);
  choose(FilesLine::read);
  EXPECT_EQ(cut(screenshot(), drawing), bare);
  EXPECT_FALSE(shows(cpu, 4, 5, "cpu"));
}

TEST_F(DiagramEditor, draws_over_plots_and_rescues_what_is_not_saved) {
  start();
  const auto pane = [this] { return cut(screenshot(), {0, 0, 680, 168}); };
  open(plot_tool);
  run(plot_tool, 0);
  const Picture plotted = pane();
  open_palette({300, 535});
  draw(PaletteLine::box, {100, 20}, {300, 120});
  const Picture drawn = pane();
  EXPECT_NE(drawn, plotted);
  run(plot_tool, 0);
  EXPECT_EQ(pane(), drawn) << "a plot goes beneath the figures";
  choose(PaletteLine::undo);
  EXPECT_EQ(pane(), plotted);
  choose(PaletteLine::node);
  drag({200, 40}, {200, 140});
  const Area leave = icon_area(0);
  click(leave.x + 20, leave.y + 20);
  EXPECT_EQ(exit_status(), 1);
  EXPECT_TRUE(wrote("diagram saved in figure.vob.bak"));
  EXPECT_NE(read_file("figure.vob.bak").find("node x1=200 y1=40 x2=200 y2=140"), std::string::npos);
}

}  // namespace
}  // namespace torve::desktop
