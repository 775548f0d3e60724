// A diagram as values: what undo goes back to and what files hold.
#pragma once

#include <vector>

#include "diagram/model/vobj.hpp"

namespace torve {

/// A figure without what belongs to the canvas and the window objects: of `record` the links, the
/// saved pixels, the menu id and the label count for nothing.
struct KeptFigure {
  Vobj record;
  int label = 0;  // serial number of its label, 0 for none
};
using KeptDiagram = std::vector<KeptFigure>;  // first to last

/// The figures of which something is to be seen.
[[nodiscard]] KeptDiagram keep_diagram();

}  // namespace torve
