#include "bell.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <random>
#include <span>

#include "app/signal/sampling_rate.hpp"
#include "series.hpp"

namespace torve {

namespace {

constexpr int recording_samples = 88200;
constexpr int strike_sample = 8450;
constexpr double two_pi = 2 * pi;
constexpr double loudest = 0.86;  // of full scale, where a careful recordist would set the level

// A partial of a cast bell is a pair of vibrations a little apart: the cup is never quite round.
struct Partial {
  double hertz;
  double split_hertz;  // distance of the pair; they beat
  double level;
  double decay_seconds;  // to 1/e
  double second_level;   // how much of it reaches the second microphone
  double second_lag;     // and by how many degrees later
};

constexpr std::array<Partial, 17> partials = {{
    {97.3, 0.9, 0.330, 1.700, 0.88, -3},    // hum
    {195.8, 3.1, 0.270, 0.950, 1.10, -6},   // prime
    {234.1, 4.6, 0.300, 0.780, 0.85, -2},   // tierce: a minor third above the prime
    {293.0, 5.2, 0.110, 0.340, 1.30, -15},  // quint
    {391.6, 6.4, 0.340, 0.420, 0.92, -3},   // nominal
    {521.0, 4.0, 0.100, 0.210, 0.60, 25},   //
    {588.4, 7.5, 0.210, 0.230, 1.15, -18},  // twelfth
    {803.9, 8.2, 0.170, 0.150, 0.80, 30},   // upper octave
    {1047.0, 9.0, 0.110, 0.105, 0.70, -34},
    {1312.0, 11.0, 0.095, 0.075, 0.85, 41},
    {1596.0, 10.0, 0.080, 0.056, 0.55, -47},
    {1904.0, 13.0, 0.070, 0.043, 0.65, 60},
    {2237.0, 12.0, 0.060, 0.034, 0.50, -66},
    {2894.0, 17.0, 0.055, 0.024, 0.42, 75},
    {3561.0, 15.0, 0.045, 0.018, 0.38, -80},
    {4720.0, 21.0, 0.040, 0.012, 0.30, 90},
    {6090.0, 24.0, 0.030, 0.008, 0.25, -90},
}};

// Walls: the same stroke again, later and duller.
struct Echo {
  int samples;
  double level;
};
constexpr std::array<Echo, 5> first_echoes = {
    {{617, 0.23}, {1409, -0.17}, {2741, 0.13}, {4217, -0.09}, {6911, 0.06}}};
constexpr std::array<Echo, 5> second_echoes = {
    {{863, -0.20}, {1187, 0.19}, {3169, 0.12}, {3877, 0.09}, {7331, -0.06}}};

void add_vibration(std::vector<double>& sound, double hertz, double decay_seconds, double level,
                   double lag_degrees) {
  const std::complex<double> step =
      exponential({-1 / (decay_seconds * sampling_rate), two_pi * hertz / sampling_rate});
  std::complex<double> vibration = level * exponential({0, -two_pi * lag_degrees / 360});
  for (std::size_t i = strike_sample; i < sound.size(); ++i) {
    sound[i] += vibration.imag();
    vibration *= step;
  }
}

/// The clapper takes most of a millisecond to push the metal, so no vibration starts at once.
void soften_start(std::vector<double>& sound) {
  constexpr double rate = 0.03;
  double missing = 1;
  for (std::size_t i = strike_sample; i < sound.size(); ++i) {
    sound[i] *= 1 - missing;
    missing *= 1 - rate;
  }
}

double noise(std::mt19937& random) {
  constexpr double range = 4294967296.0;
  double sum = -2;
  for (int i = 0; i < 4; ++i)
    sum += static_cast<double>(random()) / range;
  return sum;
}

/// The knock of the clapper: a few milliseconds of noise.
void add_knock(std::vector<double>& sound, double level, std::mt19937& random) {
  double envelope = level;
  double previous = 0;
  for (std::size_t i = strike_sample; i < sound.size() && envelope > 1e-7; ++i) {
    const double value = noise(random);
    sound[i] += envelope * (value - 0.6 * previous);
    previous = value;
    envelope *= 0.9958;
  }
}

void add_echoes(std::vector<double>& sound, std::span<const Echo> echoes, double dullness) {
  std::vector<double> dull = sound;
  double kept = 0;
  for (double& value : dull)
    value = kept += dullness * (value - kept);
  for (const Echo& echo : echoes) {
    const auto delay = static_cast<std::size_t>(echo.samples);
    for (std::size_t i = delay; i < sound.size(); ++i)
      sound[i] += echo.level * dull[i - delay];
  }
}

/// The room: wind and traffic far away, and the hiss of the amplifier.
void add_background(std::vector<double>& sound, double rumble_level, double hiss_level,
                    std::mt19937& random) {
  double rumble = 0;
  for (double& value : sound) {
    rumble += 0.012 * (noise(random) - rumble);
    value += rumble_level * rumble + hiss_level * noise(random);
  }
}

void convert(std::vector<double>& sound) {
  double peak = 0;
  for (const double value : sound)
    peak = std::max(peak, std::abs(value));
  for (double& value : sound)
    value = std::floor(value / peak * loudest * 32768 + 0.5) / 32768;
}

std::vector<double> ringing(bool second_microphone) {
  std::vector<double> sound(second_start + recording_samples);
  for (const Partial& partial : partials) {
    const double level = partial.level * (second_microphone ? partial.second_level : 1);
    const double lag = second_microphone ? partial.second_lag : 0;
    const double half_split = partial.split_hertz / 2;
    add_vibration(sound, partial.hertz - half_split, partial.decay_seconds, 0.6 * level, lag);
    add_vibration(sound, partial.hertz + half_split, partial.decay_seconds, 0.4 * level, lag);
  }
  soften_start(sound);
  return sound;
}

}  // namespace

BellRecordings record_bell() {
  std::mt19937 knock(1902);
  std::mt19937 near_room(44100);
  std::mt19937 far_room(1544);

  BellRecordings result = {.first = ringing(false), .second = ringing(true)};
  std::mt19937 same_knock = knock;
  add_knock(result.first, 0.32, knock);
  add_knock(result.second, 0.17, same_knock);
  add_echoes(result.first, first_echoes, 0.35);
  add_echoes(result.second, second_echoes, 0.22);
  add_background(result.first, 0.20, 0.004, near_room);
  add_background(result.second, 0.26, 0.007, far_room);
  result.second.erase(result.second.begin(), result.second.begin() + second_start);
  convert(result.first);
  convert(result.second);
  return result;
}

}  // namespace torve
