// The list of what mouse and keys do, in a window of its own.
#pragma once

namespace torve {

/// Shows it, above all others when it is open already.
void open_help();

}  // namespace torve
