// What keeps the program small, and whole when memory runs out.
//
// Most of the code takes small pieces of memory without asking whether there are any. So that such
// a piece can always be had, a block lies in reserve and is given back to the system by the first
// request that fails, which is then made again. What was going on comes to its end; afterwards the
// main loop says what has happened and sets a new block aside, or ends the program in good order.
#pragma once

namespace torve {

/// From now on a block of 256 KiB or more goes back to the system when it is freed. Otherwise
/// the C library raises that limit with every larger block it meets, and hours of windows of all
/// sizes leave the process with more free memory than it uses.
void return_large_blocks();

/// Sets the reserve aside, or anew after it has been given back; false when there is no memory.
[[nodiscard]] bool hold_memory_reserve();

/// Before the reserve is, `giver` gives back what can be made again; whether that was anything.
/// Null: there is nothing.
void set_memory_giver(bool (*giver)());

/// Whether the reserve has been given back, and not been set aside anew since.
[[nodiscard]] bool memory_reserve_is_spent();

}  // namespace torve
