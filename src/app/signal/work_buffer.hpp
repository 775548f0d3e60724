// The work buffer that carries the last spectrum from the analysis to the filters.
//
// One block of 32-bit words: word 0 holds K, the number of samples the spectrum was computed from
// (0: none yet), words 1 + j the cosine coefficients a(j), 100001 + j the sine coefficients b(j),
// 200001 + j the powers P(j), as floats. It is allocated cleared and kept for the program's life.
#pragma once

#include <cstddef>

namespace torve {

inline constexpr std::size_t work_buffer_bytes = 1'600'004;

// State: the block, null when there is none.
extern void* pointer1;

/// Allocates the block, all zero; false when there is no memory.
[[nodiscard]] bool allocate_work_buffer();

/// Releases the block; nothing happens when there is none.
void release_work_buffer();

}  // namespace torve
