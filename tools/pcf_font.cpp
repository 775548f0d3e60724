#include "pcf_font.hpp"

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <type_traits>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace torve {

namespace {

struct LibraryCloser {
  void operator()(FT_Library library) const { FT_Done_FreeType(library); }
};
struct FaceCloser {
  void operator()(FT_Face face) const { FT_Done_Face(face); }
};
using LibraryPtr = std::unique_ptr<std::remove_pointer_t<FT_Library>, LibraryCloser>;
using FacePtr = std::unique_ptr<std::remove_pointer_t<FT_Face>, FaceCloser>;

LibraryPtr open_library() {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) throw std::runtime_error("FreeType does not start");
  return LibraryPtr(library);
}

FacePtr open_face(FT_Library library, const std::string& path) {
  FT_Face face = nullptr;
  if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
    throw std::runtime_error("cannot read the font " + path);
  }
  FacePtr result(face);
  if (face->num_fixed_sizes < 1 || FT_Select_Size(face, 0) != 0) {
    throw std::runtime_error("not a bitmap font: " + path);
  }
  // The ISO 646 fonts carry no Unicode map; in them ASCII is the same under both.
  if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0 && face->num_charmaps > 0) {
    FT_Set_Charmap(face, face->charmaps[0]);
  }
  return result;
}

/// A row of the glyph as 16 pixels, the leftmost in bit 15; bits beyond the bitmap are clear.
unsigned row_pixels(const FT_Bitmap& bitmap, unsigned row) {
  const unsigned pitch = static_cast<unsigned>(std::abs(bitmap.pitch));
  const unsigned char* bytes = bitmap.buffer + row * pitch;
  const unsigned second = pitch > 1 ? bytes[1] : 0U;
  return static_cast<unsigned>(bytes[0]) << 8 | second;
}

Cell cell_of(const FT_GlyphSlotRec& glyph) {
  Cell cell = {};
  if (glyph.bitmap.pitch == 0) return cell;
  for (unsigned row = 0; row < glyph.bitmap.rows; ++row) {
    const int y = baseline_row - glyph.bitmap_top + static_cast<int>(row);
    if (y < 0 || y >= cell_rows) continue;
    const unsigned pixels = row_pixels(glyph.bitmap, row);
    const int left = glyph.bitmap_left;
    const unsigned placed = left >= 0 ? pixels >> left : pixels << -left;
    cell[static_cast<std::size_t>(y)] = static_cast<std::uint8_t>(placed >> 8);
  }
  return cell;
}

}  // namespace

CellMap read_pcf_font(const std::string& path) {
  const LibraryPtr library = open_library();
  const FacePtr face = open_face(library.get(), path);
  CellMap cells;
  FT_UInt glyph = 0;
  FT_ULong code = FT_Get_First_Char(face.get(), &glyph);
  while (glyph != 0) {
    if (FT_Load_Glyph(face.get(), glyph, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO) == 0) {
      cells[static_cast<std::uint32_t>(code)] = cell_of(*face->glyph);
    }
    code = FT_Get_Next_Char(face.get(), code, &glyph);
  }
  return cells;
}

}  // namespace torve
