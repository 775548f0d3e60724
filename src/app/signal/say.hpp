// Lines on standard output that tell how far a computation is.
#pragma once

namespace torve {

/// printf, then the screen is brought up to date, so that a window does not go blank meanwhile.
[[gnu::format(printf, 1, 2)]] void say(const char* format, ...);

}  // namespace torve
