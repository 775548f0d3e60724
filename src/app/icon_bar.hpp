// The seven tools at the bottom of the canvas.
#pragma once

namespace torve {

/// Draws the pictures in a row and enters them into c_table; a picture that cannot be had leaves
/// an entry that is never hit.
void load_icon_bar();

}  // namespace torve
