#include "app/plot/pane_view.hpp"

#include <array>

namespace torve {

namespace {

std::array<PaneView, pane_count> shown;

}  // namespace

const PaneView& shown_view(int pane) {
  return shown.at(static_cast<std::size_t>(pane));
}

void note_shown_view(int pane, const PaneView& view) {
  shown.at(static_cast<std::size_t>(pane)) = view;
}

}  // namespace torve
