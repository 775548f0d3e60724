// What keeps the program whole when memory runs out.
//
// Most of the code takes small pieces of memory without asking whether there are any. So that such
// a piece can always be had, a block lies in reserve and is given back to the system by the first
// request that fails, which is then made again. What was going on comes to its end; afterwards the
// main loop says what has happened and sets a new block aside, or ends the program in good order.
#pragma once

namespace torve {

/// Sets the reserve aside, or anew after it has been given back; false when there is no memory.
[[nodiscard]] bool hold_memory_reserve();

/// Whether it has been given back, and not been set aside anew since.
[[nodiscard]] bool memory_reserve_is_spent();

}  // namespace torve
