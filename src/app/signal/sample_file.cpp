#include "app/signal/sample_file.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <sys/stat.h>

#include "base/files.hpp"
#include "base/number_text.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {
constexpr std::size_t block_size = 1 << 16;
}

SampleReader::SampleReader(std::FILE* file, std::size_t line_size)
    : file_(file),
      longest_line_(std::clamp<std::size_t>(line_size, 2, block_size / 2) - 1),
      buffer_(std::make_unique<char[]>(block_size + 1)),
      begin_(buffer_.get()),
      end_(buffer_.get()) {}

bool SampleReader::refill() {
  if (static_cast<std::size_t>(end_ - begin_) < longest_line_ && !at_end_) {
    tell_alive();
    std::memmove(buffer_.get(), begin_, static_cast<std::size_t>(end_ - begin_));
    end_ -= begin_ - buffer_.get();
    begin_ = buffer_.get();
    const std::size_t room = block_size - static_cast<std::size_t>(end_ - begin_);
    const std::size_t got = std::fread(end_, 1, room, file_);
    at_end_ = got < room;
    end_ += got;
    *end_ = '\0';
  }
  return begin_ != end_;
}

std::size_t SampleReader::line_length() const {
  const std::size_t limit = std::min(longest_line_, static_cast<std::size_t>(end_ - begin_));
  const void* newline = std::memchr(begin_, '\n', limit);
  if (newline == nullptr) return limit;
  return static_cast<std::size_t>(static_cast<const char*>(newline) - begin_) + 1;
}

bool SampleReader::skip_line() {
  if (!refill()) return false;
  begin_ += line_length();
  return true;
}

std::optional<std::string_view> SampleReader::next_line() {
  if (!refill()) return std::nullopt;
  const std::size_t length = line_length();
  const std::string_view line(begin_, length);
  begin_ += length;
  return line.substr(0, line.find('\0'));
}

bool SampleReader::take_plain_value() {
  const char* at = begin_;
  if (*at == '-') ++at;
  const char* const digits = at;
  while (static_cast<unsigned>(*at - '0') <= 9)
    ++at;
  if (at == digits || *at != ' ') return false;
  ++at;
  float value = 0;
  if (!scan_plain_float(&at, &value) || *at != '\n') return false;
  ++at;
  // A line that fgets would cut is not plain, whatever it says.
  if (static_cast<std::size_t>(at - begin_) > longest_line_) return false;
  begin_ += at - begin_;
  value_ = value;
  return true;
}

void SampleReader::take_any_value() {
  const std::size_t length = line_length();
  const char behind = begin_[length];
  begin_[length] = '\0';
  scan_sample_line(begin_, &value_);
  begin_[length] = behind;
  begin_ += length;
}

std::size_t SampleReader::read(std::span<float> values) {
  std::size_t count = 0;
  while (count < values.size() && refill()) {
    if (!take_plain_value()) take_any_value();
    values[count++] = value_;
  }
  return count;
}

LongSampleReader::LongSampleReader(std::FILE* file, const SampleRange& range)
    : reader_(file, analysis_line_size),
      left_(std::max<std::int64_t>(std::int64_t{range.end} - std::max(range.first, 0), 0)) {
  for (int line = 0; line < range.first && reader_.skip_line(); ++line) {
  }
}

std::size_t LongSampleReader::read(std::span<float> values) {
  const auto wanted = static_cast<std::size_t>(
      std::min<std::int64_t>(static_cast<std::int64_t>(values.size()), left_));
  const std::size_t got = reader_.read(values.first(wanted));
  left_ -= static_cast<std::int64_t>(got);
  return got;
}

std::vector<float> read_samples(std::FILE* file, int limit, const SampleRange& range) {
  SampleReader reader(file, analysis_line_size);
  for (int line = 0; line < range.first && reader.skip_line(); ++line) {
  }
  const std::int64_t wanted = std::int64_t{range.end} - std::max(range.first, 0);
  std::vector<float> values(static_cast<std::size_t>(
      std::clamp<std::int64_t>(wanted, 0, std::clamp(limit, 0, most_samples))));
  values.resize(reader.read(values));
  return values;
}

std::optional<std::vector<float>> read_sample_file(const std::string& name, int limit,
                                                   const SampleRange& range) {
  const FilePtr file = open_regular_file(name, "rb");
  if (!file) return std::nullopt;
  return read_samples(file.get(), limit, range);
}

std::optional<std::vector<float>> read_long_sample_file(const std::string& name,
                                                        const SampleRange& range) {
  const FilePtr file = open_regular_file(name, "rb");
  if (!file) return std::nullopt;
  LongSampleReader reader(file.get(), range);
  std::vector<float> values;
  static std::array<float, 1 << 14> block;
  for (std::size_t got; (got = reader.read(block)) > 0;)
    values.insert(values.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(got));
  return values;
}

void tell_read(std::FILE* file) {
  struct stat info = {};
  fstat(fileno(file), &info);
  tell_done(static_cast<double>(ftello(file)) / static_cast<double>(info.st_size));
}

int sample_budget(const std::string& text) {
  if (text == "all") return most_samples;
  return std::clamp(read_int(text).value_or(0), 0, most_samples);
}

std::optional<int> spectrum_size(std::string_view header_line) {
  constexpr std::string_view key = "size=";
  if (!header_line.starts_with(key)) return std::nullopt;
  return read_int(std::string(header_line.substr(key.size())));
}

void write_sample(OutputFile& file, std::int64_t index, double value) {
  char* const begin = file.reserve(longest_decimal + longest_fixed6 + 2);
  char* end = put_decimal(begin, index);
  *end++ = ' ';
  end = put_fixed6(end, value);
  *end++ = '\n';
  file.advance(static_cast<std::size_t>(end - begin));
}

void write_integer_sample(OutputFile& file, std::int64_t index, int value) {
  char* const begin = file.reserve(2 * longest_decimal + 2);
  char* end = put_decimal(begin, index);
  *end++ = ' ';
  end = put_decimal(end, value);
  *end++ = '\n';
  file.advance(static_cast<std::size_t>(end - begin));
}

void write_samples(OutputFile& file, std::span<const float> values) {
  std::int64_t index = 0;
  for (const float value : values)
    write_sample(file, index++, static_cast<double>(value));
}

void write_spectrum(OutputFile& file, int size, std::span<const float> bins) {
  char text[longest_decimal];
  file.write("size=");
  file.write({text, static_cast<std::size_t>(put_decimal(text, size) - text)});
  file.write("\n");
  write_samples(file, bins);
}

}  // namespace torve
