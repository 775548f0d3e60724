#include "diagram/diagram_state.hpp"

#include "diagram/handles.hpp"
#include "diagram/history.hpp"
#include "diagram/palette.hpp"

namespace torve {

void show_diagram_state() {
  show_armed_tool();
  show_handles();
  show_unsaved_mark();
}

}  // namespace torve
