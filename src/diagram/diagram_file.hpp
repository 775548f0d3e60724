// The diagram in files. Names are relative to the working directory.
#pragma once

#include "figure/request/figure_request.hpp"

namespace torve {

/// Writes the diagram as text (diagram_text.hpp), in place of an older file once it is complete.
/// Returns 0, or 1 after the message that it cannot be written.
int save_diagram(const char* name);

/// Makes the diagram the one in a file; undo brings the old one back. Returns 0, or 1 when there is
/// no such file or a line cannot be read: the message says so, and the diagram stays.
int read_diagram(const char* name);

/// Makes the diagram an empty one; undo brings the old one back. Returns 0.
int new_diagram();

/// Writes the diagram area as an EPS file, in the place of the template "psdiagram.dat". Returns 0,
/// or 1 after the message that it cannot be written.
int print_diagram(const char* name);

/// Makes a figure of the diagram. Returns 0, or 1 after the message that it cannot be written or
/// that there is nothing to draw.
int draw_diagram_figure(const char* name, FigureFormat format);

/// Writes a diagram with changes that are not saved to a new file "figure.vob.bak", with ".2" and
/// so on behind it when there is one, and says so on standard output: in the working directory,
/// else in the user's home, else in the directory for temporary files. Where that fails, too, says
/// that.
void rescue_diagram();

}  // namespace torve
