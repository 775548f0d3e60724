#include "app/signal/frames.hpp"

#include "app/signal/clones.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = sum_lanes;

TORVE_CLONES void turn(Frames& frames, double sign) {
  for (int l = 0; l < lanes; ++l) {
    const SineCosine at = turned({frames.sine[l], frames.cosine[l]},
                                 {sign * frames.block_sine[l], frames.block_cosine[l]});
    frames.cosine[l] = at.cosine;
    frames.sine[l] = at.sine;
  }
}

}  // namespace

TORVE_CLONES void make_turns(Frames& frames, const double* step_angles) {
  double one_cosine[lanes];
  double one_sine[lanes];
  double cosine[lanes];
  double sine[lanes];
  for (int l = 0; l < lanes; ++l) {
    const SineCosine one = sine_cosine(step_angles[l]);
    one_cosine[l] = one.cosine;
    one_sine[l] = one.sine;
    cosine[l] = 1;
    sine[l] = 0;
  }
  for (int r = 0; r < Frames::block; ++r) {
    for (int l = 0; l < lanes; ++l) {
      frames.cosines[r][l] = static_cast<float>(cosine[l]);
      frames.sines[r][l] = static_cast<float>(sine[l]);
      const SineCosine next = turned({sine[l], cosine[l]}, {one_sine[l], one_cosine[l]});
      cosine[l] = next.cosine;
      sine[l] = next.sine;
    }
  }
  for (int l = 0; l < lanes; ++l) {
    frames.block_cosine[l] = cosine[l];
    frames.block_sine[l] = sine[l];
  }
}

TORVE_CLONES void set_frames(Frames& frames, const double* angles) {
  for (int l = 0; l < lanes; ++l) {
    const SineCosine at = sine_cosine(angles[l]);
    frames.cosine[l] = at.cosine;
    frames.sine[l] = at.sine;
  }
}

void turn_on(Frames& frames) {
  turn(frames, 1);
}

void turn_back(Frames& frames) {
  turn(frames, -1);
}

}  // namespace torve
