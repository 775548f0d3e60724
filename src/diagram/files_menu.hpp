// The menu that saves, reads and prints the diagram.
#pragma once

namespace torve {

/// Shows it, above all others when it is open already. Returns 0.
int open_diagram_files();

}  // namespace torve
