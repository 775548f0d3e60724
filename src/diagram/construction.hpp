// Figures that programs make, not the mouse: placed and drawn at once. Positions and lengths are
// pixels. Nothing of this is used by the workbench itself.
#pragma once

#include "text/fonts.hpp"

namespace torve {

/// Lines to the right and downwards, an arrow, a circle in a square. Return 0.
int put_hline(int x, int y, int length);
int put_vline(int x, int y, int length);
int put_arrow(int x1, int y1, int x2, int y2);
int put_circle(int x, int y, int size);

/// A label that belongs to nobody. Returns its width, pixels. The font is the second one, whatever
/// is passed.
int textx(const GlyphBlock& glyphs, const AdvanceTable& advances, const char* text, int x, int y);

/// A black label at (100, 200); nothing when the last thing done was the same. Returns 0.
int label_ope(const char* text);

}  // namespace torve
