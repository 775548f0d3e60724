// A diagram as values: what undo goes back to and what files hold.
#pragma once

#include <memory>
#include <vector>

#include "diagram/model/vobj.hpp"

namespace torve {

struct KeptFigure {
  FigureRecord record;
  int label = 0;  // serial number of its label, 0 for none
  bool operator==(const KeptFigure&) const = default;
};
using KeptDiagram = std::vector<KeptFigure>;  // first to last

/// The same; figures that have not changed since they were kept last are the same values.
using SharedDiagram = std::vector<std::shared_ptr<const KeptFigure>>;

/// A figure as a file would hold it: its codes are those that its menu would show.
[[nodiscard]] KeptFigure keep_figure(const Vobj& figure);

/// The figures of which something is to be seen.
[[nodiscard]] KeptDiagram keep_diagram();
[[nodiscard]] SharedDiagram share_diagram();

/// Whether two diagrams have the same figures, whatever lies above what.
[[nodiscard]] bool have_same_figures(const SharedDiagram& one, const SharedDiagram& other);

}  // namespace torve
