// What of the diagram's state is to be seen beside its figures.
#pragma once

namespace torve {

/// The palette's line of the tool in use, the handles, the mark behind the window's title. The main
/// loop calls it after each event.
void show_diagram_state();

}  // namespace torve
