// The sampling rate of every signal. Files that say another one are taken as if they said this.
#pragma once

namespace torve {

inline constexpr int sampling_rate = 44100;  // samples a second

}  // namespace torve
