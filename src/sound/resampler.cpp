#include "sound/resampler.hpp"

#include <samplerate.h>

namespace torve {

namespace {

struct StateCloser {
  void operator()(SRC_STATE* state) const { src_delete(state); }
};
using StatePtr = std::unique_ptr<SRC_STATE, StateCloser>;

class SincResampler : public Resampler {
 public:
  SincResampler(StatePtr state, double ratio) : state_(std::move(state)), ratio_(ratio) {}

  Step step(std::span<const float> in, std::span<float> out) override {
    SRC_DATA data = {};
    data.data_in = in.data();
    data.data_out = out.data();
    data.input_frames = static_cast<long>(in.size());
    data.output_frames = static_cast<long>(out.size());
    data.src_ratio = ratio_;
    if (src_process(state_.get(), &data) != 0) return {.is_fine = false};
    return {.taken = static_cast<std::size_t>(data.input_frames_used),
            .given = static_cast<std::size_t>(data.output_frames_gen)};
  }

 private:
  StatePtr state_;
  double ratio_;
};

}  // namespace

std::unique_ptr<Resampler> make_resampler(double ratio, std::string& why) {
  int error = 0;
  if (src_is_valid_ratio(ratio) == 0) {
    why = "its sampling rate is too far from the new one";
    return nullptr;
  }
  StatePtr state(src_new(SRC_SINC_BEST_QUALITY, 1, &error));
  if (state) return std::make_unique<SincResampler>(std::move(state), ratio);
  why = src_strerror(error);
  return nullptr;
}

}  // namespace torve
