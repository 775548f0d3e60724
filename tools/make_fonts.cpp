// make_fonts OUTPUT_DIRECTORY [PCF_DIRECTORY]
//
// Writes the program's fonts, made from the X server's bitmap fonts of 10 rows:
//   font7   the menus (fixed 8-pixel cells; two-pixel stems read best on coloured ground)
//   font6   labels, font33 numbers, font35 Greek (proportional, from the 6x10 face)
// Every font must be 10 rows high: the line height of the whole program follows from it.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "font_cells.hpp"
#include "output.hpp"
#include "pair_advances.hpp"
#include "pcf_font.hpp"

namespace {

using namespace torve;

constexpr const char* debian_fonts = "/usr/share/fonts/X11/misc";

void write_glyphs(const std::filesystem::path& path, const FontCells& cells) {
  std::string bytes = {static_cast<char>(cell_rows), static_cast<char>(font_glyphs)};
  for (const Cell& cell : cells)
    bytes.append(cell.begin(), cell.end());
  write_whole_file(path, bytes);
}

void write_proportional(const std::filesystem::path& directory, const std::string& name,
                        const FontCells& cells) {
  write_glyphs(directory / (name + ".dat"), cells);
  const PairAdvances advances = pair_advances(cells);
  write_whole_file(directory / (name + ".dis"), std::string(advances.begin(), advances.end()));
}

void make_fonts(const std::filesystem::path& directory, const std::string& source) {
  const CellMap bold = read_pcf_font(source + "/clB8x10.pcf.gz");
  const CellMap light = read_pcf_font(source + "/6x10.pcf.gz");
  const CellMap marks = read_pcf_font(source + "/clR6x10.pcf.gz");

  std::filesystem::create_directories(directory);
  const FontCells labels = proportional_cells(light, marks);
  write_glyphs(directory / "font7.dat", fixed_cells(bold, light));
  write_proportional(directory, "font6", labels);
  write_proportional(directory, "font33", labels);
  write_proportional(directory, "font35", greek_cells(light));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::fputs("usage: make_fonts OUTPUT_DIRECTORY [PCF_DIRECTORY]\n", stderr);
    return 2;
  }
  try {
    make_fonts(argv[1], argc > 2 ? argv[2] : debian_fonts);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_fonts: %s\n", error.what());
    return 1;
  }
  return 0;
}
