// Any bytes as a file, for what reads files without a screen.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

#include "app/signal/au_file.hpp"
#include "app/signal/report.hpp"
#include "app/signal/sample_file.hpp"
#include "base/files.hpp"
#include "base/number_text.hpp"
#include "eps/eps_stream.hpp"
#include "memory_file.hpp"

namespace torve {

namespace {

std::vector<float> values_of(const std::string& name, std::size_t line_size, std::size_t most) {
  const FilePtr file = open_file(name, "rb");
  SampleReader reader(file.get(), line_size);
  std::vector<float> values(most);
  values.resize(reader.read(values));
  return values;
}

std::vector<float> values_by_sscanf(std::FILE* file, std::size_t line_size) {
  std::vector<float> values;
  std::vector<char> line(line_size);
  float value = 0;
  while (std::fgets(line.data(), static_cast<int>(line_size), file) != nullptr) {
    std::sscanf(line.data(), "%*d %f", &value);
    values.push_back(value);
  }
  return values;
}

std::vector<float> bins_of(const std::string& name, int skipped, std::size_t most, int* size) {
  const FilePtr file = open_file(name, "rb");
  SampleReader reader(file.get(), pane_line_size);
  if (const auto header = reader.next_line()) *size = spectrum_size(*header).value_or(1);
  while (skipped-- > 0 && reader.skip_line()) {
  }
  std::vector<float> bins(most);
  bins.resize(reader.read(bins));
  return bins;
}

}  // namespace

// Any text gives the values that fgets and sscanf give; the first byte chooses the line buffer.
void sample_reader(Bytes input) {
  if (input.empty()) return;
  const MemoryFile text(input.subspan(1));
  const std::size_t line_size = (input[0] & 1) != 0 ? pane_line_size : analysis_line_size;
  const auto expected = values_by_sscanf(open_file(text.name(), "rb").get(), line_size);
  require(std::ranges::equal(
      values_of(text.name(), line_size, input.size()), expected, [](float one, float other) {
        return std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(other);
      }));
}

// Any text is taken as a spectrum file: a header line, lines to skip (the first byte), bins. What
// was read and is written again reads back as the same text.
void spectrum_reader(Bytes input) {
  if (input.empty()) return;
  const MemoryFile file(input.subspan(1));
  int k = 1, k_again = 0;
  const std::vector<float> bins = bins_of(file.name(), input[0], input.size(), &k);
  file.fill({});
  OutputFile output(file.name());
  write_spectrum(output, k, bins);
  require(output.finish());
  require(std::ranges::equal(bins_of(file.name(), 0, input.size(), &k_again), bins,
                             [](double one, double other) { return same_fixed6(one, other); }));
  require(k_again == k);
}

// Any bytes are taken as an AU file; the first two choose the times. No sample outside the range of
// a 32-bit float or a 16-bit integer may come out, and no more lines than there are samples.
void au_cut(Bytes input) {
  constexpr std::array<double, 8> times = {
      0, 0.0001, 1.9, 100, -1, 1e30, -1e300, std::numeric_limits<double>::quiet_NaN()};
  if (input.size() < 2) return;
  silence();
  answer(input.first(1));
  const MemoryFile au(input.subspan(2)), res;
  if (cut_part(au.name(), res.name(), times[input[0] % 8], times[input[1] % 8]) != 0) return;
  const std::vector<float> values = values_of(res.name(), analysis_line_size, input.size());
  require(values.size() <= input.size() / 4);
  require(std::ranges::all_of(values, [](float value) { return std::isfinite(value); }));
}

// Any bytes are listed as an AU file; the first says how many of the next ones are the answers.
void report(Bytes input) {
  if (input.empty()) return;
  const Bytes bytes = input.subspan(1);
  const std::size_t answers = std::min<std::size_t>(input[0], bytes.size());
  const MemoryFile au(bytes.subspan(answers));
  silence();
  answer(bytes.first(answers));
  const int result = analyse(au.name());
  require(result == 0 || result == 1);
  find_differences(au.name(), au.name());
}

// Any text is taken as a template: what is written is the template with the drawing in one place.
void eps_template(Bytes input) {
  const MemoryFile form(input), output;
  const std::string text = text_of(input);
  FilePtr opened = open_eps(output.name(), form.name());
  require(opened != nullptr);
  write_eps_segment(1, 2, 3, 4, 100);
  write_eps_label(6, 1, 2, 100, 10, "label");
  require(close_eps(std::move(opened)) == 0);
  std::ifstream file(output.name(), std::ios::binary);
  const std::string written{std::istreambuf_iterator<char>(file), {}};
  const std::string drawing =
      "Or moveto 1 CX 98 CX rmoveto 2 CX -2 CX rlineto stroke\n"
      "Or moveto 1 CX 93 CX rmoveto /Times-Roman findfont 12 CX scalefont setfont (label) show\n";
  std::size_t at = written.find(drawing);
  // A byte 0 cuts its line; everything else is copied as it stands.
  while (at != std::string::npos && text.find('\0') == std::string::npos &&
         std::string(written).erase(at, drawing.size()) != text)
    at = written.find(drawing, at + 1);
  require(at != std::string::npos);
}

}  // namespace torve
