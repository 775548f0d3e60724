// Phasors in single precision, several sums side by side: a block of terms shares the frame of its
// first one, and the others are turned within it.
//
// In units of v = 2^-24: the turns, from a table, are within 0.7 v in length. The frames are turned
// on in double, whose errors are not seen here.
#pragma once

#include "app/signal/ordered_sums.hpp"

namespace torve {

struct Frames {
  static constexpr int block = 128;  // terms that share a frame: setting its counters takes a while

  alignas(64) float cosines[block][sum_lanes];  // of r steps
  alignas(64) float sines[block][sum_lanes];
  alignas(64) double cosine[sum_lanes];  // of the first term
  alignas(64) double sine[sum_lanes];
  alignas(64) double block_cosine[sum_lanes];  // the turn to the next block
  alignas(64) double block_sine[sum_lanes];
};

/// Makes the turns of steps by these angles.
void make_turns(Frames& frames, const double* step_angles);
/// Sets the frames to these angles.
void set_frames(Frames& frames, const double* angles);
/// Turns them to the block behind, or the one before.
void turn_on(Frames& frames);
void turn_back(Frames& frames);

}  // namespace torve
