#include "app/signal/report.hpp"

#include <array>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string_view>

#include "app/signal/au_codec.hpp"
#include "app/signal/au_file.hpp"
#include "app/signal/key_input.hpp"
#include "base/console.hpp"
#include "base/files.hpp"

namespace torve {

namespace {

constexpr std::array<const char*, 3> summary_names = {"Min", "Max", "RMS"};
constexpr int summary_words = 6;

using Word = std::array<std::uint8_t, 4>;
using HalfWord = std::array<std::uint8_t, 2>;

/// A decoded number and its bits as text. Not-a-number leaves the value as it was.
struct Number {
  std::array<char, 33> bits = {};
  float value = 0;

  void decode(std::span<const std::uint8_t> bytes) {
    sbinary(bits.data(), bytes.data(), static_cast<int>(8 * bytes.size()), &value);
  }
  double as_double() const { return static_cast<double>(value); }
};

/// The file and the position P of the next field.
class Report {
 public:
  explicit Report(std::FILE* file) : file_(file) {}

  /// False if the file is no AU file of this layout.
  bool list_header();
  void list_rest();

 private:
  bool list_fields();
  bool list_summary();
  void print_halves(int word, const Word& bytes);
  void print_float(int word, const Word& bytes);
  bool list_block(bool shown, const KeyInput& keys);
  bool list_sample(const KeyInput& keys);
  void print_decoded(const char* name, std::int64_t position, std::span<const std::uint8_t> bytes);

  bool read(std::span<std::uint8_t> bytes) { return read_bytes(file_, bytes); }
  bool list_integer(const char* name, std::int32_t* value = nullptr);
  int position() const { return static_cast<int>(position_); }

  std::FILE* file_;
  std::int64_t position_ = 0;
  std::int32_t header_length_ = 0;
  std::int32_t encoding_ = 0;
  Number number_;
};

bool Report::list_integer(const char* name, std::int32_t* value) {
  Word word;
  if (!read(word)) return false;
  const std::int32_t integer = au_word(word);
  std::printf("%d %s=%d\n", position(), name, static_cast<int>(integer));
  position_ += 4;
  if (value != nullptr) *value = integer;
  return true;
}

bool Report::list_fields() {
  std::array<char, 21> text = {};
  const auto bytes = std::as_writable_bytes(std::span(text));
  const auto read_text = [&](std::size_t size) {
    return std::fread(bytes.data(), 1, size, file_) == size;
  };
  if (!read_text(4) || std::string_view(text.data()) != au_magic) return false;
  std::printf("%d AU-file header: %s\n", position(), text.data());
  position_ += 4;
  if (!list_integer("Data offset (=header length)", &header_length_)) return false;
  Word size;
  if (!read(size)) return false;
  number_.decode(size);
  std::printf("%d Data size (not known=FFFFFF00) %s\n", position(), number_.bits.data());
  position_ += 4;
  if (!list_integer("Encoding", &encoding_) || !list_integer("Sampling rate") ||
      !list_integer("Channels") || !read_text(20)) {
    return false;
  }
  std::printf("%d Name=%s\n", position(), text.data());
  position_ += 20;
  return true;
}

void Report::print_halves(int word, const Word& bytes) {
  const char* const name = summary_names[static_cast<std::size_t>(word % 3)];
  number_.decode(std::span(bytes).first(2));
  std::printf("%d Ch1 %s=%f\n", position(), name, number_.as_double());
  number_.decode(std::span(bytes).last(2));
  std::printf("%d Ch2 %s=%f\n", position(), name, number_.as_double());
}

void Report::print_float(int word, const Word& bytes) {
  const char* const name = summary_names[static_cast<std::size_t>(word % 3)];
  number_.decode(bytes);
  std::printf("%d %s=%f", position(), name, number_.as_double());
  if (word < 3) std::printf(" line=%s", number_.bits.data());
  std::printf("\n");
}

bool Report::list_summary() {
  if (encoding_ != au_halves && encoding_ != au_float) return true;
  for (int word = 0; word < summary_words; ++word) {
    Word bytes;
    if (!read(bytes)) return false;
    if (encoding_ == au_halves) {
      print_halves(word, bytes);
    } else {
      print_float(word, bytes);
    }
    position_ += 4;
  }
  return true;
}

bool Report::list_header() {
  return list_fields() && list_summary();
}

/// The header behind the fixed part, as 16-bit numbers; false at the end of the file.
bool Report::list_block(bool shown, const KeyInput& keys) {
  HalfWord bytes;
  // The length counts from the end of the summary even where the encoding has none.
  std::int64_t rest = header_length_;
  for (rest -= au_fixed_part; rest > 0; rest -= 2) {
    if (!read(bytes)) return false;
    if (shown) {
      number_.decode(bytes);
      std::printf("%d %s %f\n", position(), number_.bits.data(), number_.as_double());
    }
    position_ += 2;
    if (shown && !keys.wants_more()) break;
  }
  return true;
}

void Report::print_decoded(const char* name, std::int64_t position,
                           std::span<const std::uint8_t> bytes) {
  number_.decode(bytes);
  std::printf("%d %s=%f\n", static_cast<int>(position), name, number_.as_double());
}

/// One sample, or one word of two; false at the end of the file or the listing.
bool Report::list_sample(const KeyInput& keys) {
  Word bytes;
  const std::span used = std::span(bytes).first(encoding_ == au_int16 ? 2 : 4);
  if (!read(used)) return false;
  switch (encoding_) {
    case au_int16:
      std::printf("%d %d\n", position(), au_half_word(used.first<2>()));
      break;
    case au_float:
      print_decoded("f1", position_, used);
      break;
    case au_halves:
      print_decoded("f1", position_ + 2, used.first(2));
      print_decoded("f2", position_ + 2, used.last(2));
      break;
    default:
      return false;
  }
  position_ += static_cast<std::int64_t>(used.size());
  return keys.wants_more();
}

void Report::list_rest() {
  const KeyInput keys;
  keys.forget_typed();
  std::printf("...want to skip the header block... (y/n)\n");
  const int answer = read_console_char();
  if (answer == EOF) return;
  if (!list_block(answer != 'y', keys)) return;
  while (list_sample(keys)) {
  }
}

void print_difference(const std::string& path, std::span<const std::uint8_t> bytes,
                      Number& number) {
  number.decode(bytes);
  std::printf("in %s is  %s  %f\n", path.c_str(), number.bits.data(), number.as_double());
}

}  // namespace

Outcome report_au_file(const std::string& path) {
  const FilePtr file = open_regular_file(path, "rb");
  if (file) {
    Report report(file.get());
    if (report.list_header()) {
      report.list_rest();
      return {};
    }
  }
  std::printf("not au-file\n");
  serve_screen();
  return file ? Outcome{.cause = Cause::not_au_file, .name = path} : input_failure(path);
}

int analyse(const std::string& path) {
  return report_au_file(path).is_done() ? 0 : 1;
}

int find_differences(const std::string& path1, const std::string& path2) {
  const FilePtr file1 = open_regular_file(path1, "rb");
  const FilePtr file2 = open_regular_file(path2, "rb");
  if (!file1 || !file2) return 0;
  const KeyInput keys;
  HalfWord bytes1;
  HalfWord bytes2;
  Number number1;
  Number number2;
  for (int position = 0; read_bytes(file1.get(), bytes1) && read_bytes(file2.get(), bytes2);
       position += 2) {
    if (bytes1 == bytes2) continue;
    std::printf("Difference at %d\n", position);
    print_difference(path1, bytes1, number1);
    print_difference(path2, bytes2, number2);
    if (!keys.wants_more()) break;
  }
  return 0;
}

}  // namespace torve
