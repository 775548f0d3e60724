// National letters typed on a plain keyboard.
//
// The fonts carry them at the codes 1 to 24. Polish letters are typed as a letter and a marker
// behind it (l/ a, c' z.); Scandinavian ones arrive as characters of the IBM PC set 437.
#pragma once

namespace torve {

/// Replaces every letter-and-marker pair by its glyph code; the text gets shorter. Returns 1 when
/// the last pair examined was replaced, 0 when it was not or there was none.
int insertPolishChars(char* text);

/// Replaces one character of set 437 by its glyph code; others are left alone.
void insertScandiChars(char* character);

}  // namespace torve
