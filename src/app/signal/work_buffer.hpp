// The work buffer that carries the last spectrum from the analysis to the filters.
//
// One block of 32-bit words: word 0 holds K, the number of samples the spectrum was computed from
// (0: none yet), words 1 + j the cosine coefficients a(j), 100001 + j the sine coefficients b(j),
// 200001 + j the powers P(j), as floats. It is allocated cleared and kept for the program's life.
// A spectrum writes its bins 0 .. K/2; what an earlier, larger one left above them stays.
// Coefficients that nobody has asked for yet may be open: near the sums that they stand for, but
// not these floats. What they were computed from is kept with them (settle_stored_coefficients).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace torve {

inline constexpr std::size_t work_buffer_bytes = 1'600'004;

// State: the block, null when there is none.
extern void* pointer1;

/// The signal x of a spectrum, and which of its bins 0 and up are open.
struct OpenCoefficients {
  std::vector<float> x;
  std::vector<std::uint8_t> open;
};

// State: of the stored spectra, the latest and smallest last. Each is responsible for its bins
// above those of the next one.
extern std::vector<OpenCoefficients> open_coefficients;

/// Allocates the block, all zero; false when there is no memory.
[[nodiscard]] bool allocate_work_buffer();

/// Releases the block; nothing happens when there is none.
void release_work_buffer();

/// Word 0; 0 when there is no block.
[[nodiscard]] int stored_spectrum_size();
void store_spectrum_size(int size);

/// The 100000 words a(j), b(j) and P(j). Only while there is a block.
[[nodiscard]] std::span<float> stored_a();
[[nodiscard]] std::span<float> stored_b();
[[nodiscard]] std::span<float> stored_power();

}  // namespace torve
