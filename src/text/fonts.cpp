#include "text/fonts.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include "base/files.hpp"

namespace torve {

int curfnt = 0;
int defaultfont = 2;
GlyphBlock chlist;
AdvanceTable chdist;
int ysize = 0, fsize = 0;
int cs = 0, cr = 0;
GlyphBlock chlist2;
AdvanceTable chdist2;
int ysizeb = 0, csb = 0;

namespace {

constexpr int cell_width = 8;
constexpr std::size_t advance_bytes = std::size_t{advance_classes} * advance_classes;
constexpr int first_capital_class = 30;

int fsizeb = 0;

// What a code without a glyph looks like, at any height.
constexpr std::array<std::uint8_t, 255> replacement_box = {0,    0x7C, 0x44, 0x44,
                                                           0x44, 0x44, 0x44, 0x7C};

std::string font_file(int number, const char* ending) {
  return "font" + std::to_string(number) + ending;
}

int character_class(char character) {
  if (character >= 'a' && character <= 'z') return character - 'a';
  if (character >= 'A' && character <= 'Z') return character - 'A' + first_capital_class;
  return 0;
}

const std::uint8_t* rows_of(const GlyphBlock& glyphs, int count, int height, char character) {
  const int code = static_cast<unsigned char>(character);
  return glyphs && code < count ? glyphs.get() + code * height : replacement_box.data();
}

struct LoadedFont {
  int height = 0, count = 0;
  GlyphBlock glyphs;
  AdvanceTable advances;
};

bool load(int number, LoadedFont& font) {
  return read_chlist(number, &font.height, &font.count, &font.glyphs) == 0 &&
         read_chdist(number, &font.advances) == 0;
}

}  // namespace

int init_font(int number) {
  LoadedFont font;
  if (!load(number, font)) return 1;
  curfnt = number;
  ysize = font.height;
  fsize = font.count;
  chlist = std::move(font.glyphs);
  chdist = std::move(font.advances);
  cr = ysize + 1;
  cs = cell_width;
  return 0;
}

int init_font2(int number) {
  LoadedFont font;
  if (!load(number, font)) return 1;
  ysizeb = font.height;
  fsizeb = font.count;
  chlist2 = std::move(font.glyphs);
  chdist2 = std::move(font.advances);
  csb = cell_width;
  return 0;
}

int free_font() {
  curfnt = cs = cr = fsize = ysize = 0;
  chlist.reset();
  chdist.reset();
  return 0;
}

int free_font2() {
  ysizeb = csb = fsizeb = 0;
  chlist2.reset();
  chdist2.reset();
  return 0;
}

int read_chlist(int number, int* height, int* count, GlyphBlock* glyphs) {
  const std::string name = font_file(number, ".dat");
  const FilePtr file = open_data_file(name, DataKind::font, "r+");
  std::uint8_t header[2] = {};
  // Text without rows could be neither read nor pressed.
  if (!file || std::fread(header, 1, sizeof header, file.get()) != sizeof header ||
      header[0] == 0) {
    std::printf("can't open font file %s\n", name.c_str());
    return 1;
  }
  const std::size_t bytes = std::size_t{header[0]} * header[1];
  GlyphBlock block(new (std::nothrow) std::uint8_t[std::max<std::size_t>(bytes, 1)]);
  if (!block) {
    std::printf("malloc fails fsize=%d ysize=%d\n", fsize, ysize);
    return 1;
  }
  if (std::fread(block.get(), 1, bytes, file.get()) != bytes) {
    std::printf("can't open font file %s\n", name.c_str());
    return 1;
  }
  *height = header[0];
  *count = header[1];
  *glyphs = std::move(block);
  return 0;
}

int read_chdist(int number, AdvanceTable* table) {
  table->reset();
  const FilePtr file = open_data_file(font_file(number, ".dis"), DataKind::font, "rb+");
  if (!file) return 0;
  AdvanceTable loaded(new (std::nothrow) signed char[advance_bytes]);
  if (!loaded) {
    std::printf("malloc fails allocating 3600 bytes\n");
    return 1;
  }
  // A table that breaks off would set its last letters on top of each other: fixed cells instead.
  if (std::fread(loaded.get(), 1, advance_bytes, file.get()) == advance_bytes) {
    *table = std::move(loaded);
  }
  return 0;
}

const std::uint8_t* glyph_rows(char character) {
  return rows_of(chlist, fsize, ysize, character);
}

const std::uint8_t* glyph_rows2(char character) {
  return rows_of(chlist2, fsizeb, ysizeb, character);
}

int get_xoff(const AdvanceTable& table, const char* text, int i) {
  return table[static_cast<std::size_t>(character_class(text[i]) * advance_classes +
                                        character_class(text[i + 1]))];
}

int fntlen2(const char* text) {
  if (!chlist2) return 0;
  int width = csb;
  for (int i = 0; text[i] != 0 && text[i + 1] != 0; ++i) {
    const int advance = chdist2 ? get_xoff(chdist2, text, i) : 0;
    width += advance != 0 ? advance : csb;
  }
  return width;
}

}  // namespace torve
