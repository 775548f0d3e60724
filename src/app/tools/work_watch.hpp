// What a person sees of a long computation: how far it is, in the strip. Escape cancels it.
#pragma once

namespace torve {

/// From now on every computation is watched. Its picture stays up to date, and after half a second
/// the strip says how far it is.
void watch_computations();

}  // namespace torve
