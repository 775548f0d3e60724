// What the first picture costs: panes from file to image, and images to pixels.

#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "app/plot/plot_panes.hpp"
#include "app/plot/running_sums.hpp"
#include "app/signal/sample_file.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"

namespace torve {
namespace {

constexpr int samples = 100'000;

std::mt19937 noise(7);

double white_noise(int) {
  return std::uniform_real_distribution<double>(-1, 1)(noise);
}

double sine(int i) {
  return std::sin(i * 0.0626);
}

// Syllables of a buzz with a slow melody.
double speech_like(int i) {
  const double syllable = std::max(0.0, std::sin(i * 0.0005));
  return syllable * syllable *
         (std::sin(i * 0.02) + 0.5 * std::sin(i * 0.14) + 0.1 * white_noise(i));
}

const std::string& sample_file(double (*signal)(int), const char* name) {
  static std::string path;
  path = std::string("/tmp/torve_bench_") + name + ".res";
  std::FILE* file = std::fopen(path.c_str(), "w");
  for (int i = 0; i < samples; ++i)
    std::fprintf(file, "%d %f\n", i, signal(i));
  std::fclose(file);
  return path;
}

void prepare_screen() {
  static_cast<void>(create_screen_image());
  allocate_colours(allocate_true_colour);
  set_xcolor2();
  reset_screen_state();
  static_cast<void>(init_font(7));
  static_cast<void>(init_font2(label_font));
}

void pane(benchmark::State& state, double (*signal)(int), const char* name) {
  prepare_screen();
  const std::string path = sample_file(signal, name);
  std::FILE* console = stdout;
  stdout = std::fopen("/dev/null", "w");
  for (auto _ : state) {
    clearwin(0, 0, screen_width, pane_rows, nocolor);
    plot_anew(path.c_str(), 0, 0, 1, 0.02, 1, target_screen);
  }
  std::fclose(stdout);
  stdout = console;
  std::remove(path.c_str());
}
BENCHMARK_CAPTURE(pane, sine, sine, "sine")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pane, speech_like, speech_like, "speech")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pane, white_noise, white_noise, "noise")->Unit(benchmark::kMillisecond);

// Every segment on its own, as the curve would be drawn without joining those of one column.
void noise_segments_one_by_one(benchmark::State& state) {
  prepare_screen();
  std::uniform_int_distribution<int> row(12, 154);
  for (auto _ : state) {
    int last = 75;
    for (int i = 1; i < 38'150; ++i) {
      const int next = row(noise);
      draw_line(32 + (i - 1) / 50, last, 32 + i / 50, next, 0, target_screen);
      last = next;
    }
  }
}
BENCHMARK(noise_segments_one_by_one)->Unit(benchmark::kMillisecond);

void read_values(benchmark::State& state) {
  const std::string path = sample_file(white_noise, "read");
  std::vector<float> values(samples);
  for (auto _ : state) {
    const FilePtr file = open_file(path, "r");
    SampleReader reader(file.get(), pane_line_size);
    benchmark::DoNotOptimize(reader.read(values));
  }
  std::remove(path.c_str());
}
BENCHMARK(read_values)->Unit(benchmark::kMillisecond);

void read_values_with_sscanf(benchmark::State& state) {
  const std::string path = sample_file(white_noise, "scan");
  std::vector<float> values(samples);
  for (auto _ : state) {
    const FilePtr file = open_file(path, "r");
    char line[pane_line_size];
    for (float& value : values) {
      if (std::fgets(line, sizeof line, file.get()) == nullptr) break;
      int index = 0;
      std::sscanf(line, "%d %f", &index, &value);
    }
    benchmark::DoNotOptimize(values.data());
  }
  std::remove(path.c_str());
}
BENCHMARK(read_values_with_sscanf)->Unit(benchmark::kMillisecond);

void screen_to_pixels(benchmark::State& state) {
  prepare_screen();
  std::vector<std::uint32_t> pixels(std::size_t{screen_width} * screen_height);
  for (auto _ : state) {
    read_pixels(whole_screen, pixels.data(), screen_width);
    benchmark::DoNotOptimize(pixels.data());
  }
}
BENCHMARK(screen_to_pixels)->Unit(benchmark::kMillisecond);

void sums_over_steps(benchmark::State& state) {
  std::vector<float> values(samples);
  for (float& value : values)
    value = static_cast<float>(white_noise(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(running_sums(values, static_cast<int>(state.range(0))));
  }
}
BENCHMARK(sums_over_steps)->Arg(1)->Arg(441)->Arg(samples)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torve
