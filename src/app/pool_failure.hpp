// How a pool that gets no memory says so.
#pragma once

namespace torve {

/// Lets the pool report on the screen: a red box with the size that failed, until a key is
/// pressed, and a line of text for a data node. Nothing is drawn while there is no screen.
void install_pool_reporters();

}  // namespace torve
