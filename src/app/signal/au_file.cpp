#include "app/signal/au_file.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "app/signal/au_codec.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/say.hpp"
#include "base/console.hpp"
#include "base/files.hpp"
#include "base/output_file.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr std::array<float, 6> summary = {-1.0F, 1.0F, 0.32773599F, -1.0F, 1.0F, 0.29908001F};
constexpr std::size_t padding_words = 765;
static_assert(au_fixed_part + 4 * padding_words == au_header_length);

void append(std::vector<std::uint8_t>& bytes, std::string_view text) {
  for (const char character : text)
    bytes.push_back(static_cast<std::uint8_t>(character));
}

void append_word(std::vector<std::uint8_t>& bytes, std::uint32_t word) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<std::uint8_t>(word >> shift & 0xff));
  }
}

/// The fields before the summary.
std::vector<std::uint8_t> leading_fields() {
  std::vector<std::uint8_t> bytes;
  append(bytes, au_magic);
  append_word(bytes, au_header_length);
  append_word(bytes, 0x00ffffff);
  append_word(bytes, au_float);
  append_word(bytes, sampling_rate);
  append_word(bytes, 1);
  append(bytes, au_annotation);
  return bytes;
}

std::vector<std::uint8_t> header_of_halves() {
  std::vector<std::uint8_t> bytes = leading_fields();
  for (const float value : summary) {
    std::array<std::uint8_t, 2> half = {};
    build_binary16(value, half);
    bytes.insert(bytes.end(), half.begin(), half.end());
  }
  bytes.resize(bytes.size() + 2 * padding_words);
  return bytes;
}

std::string_view as_text(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void write_words(OutputFile& au, std::FILE* res) {
  SampleReader reader(res, analysis_line_size);
  std::array<float, 1024> values;
  std::array<std::uint8_t, 4> word = {};  // kept: a not-a-number repeats the word before
  for (std::size_t got; (got = reader.read(values)) > 0;) {
    tell_read(res);
    for (const float value : std::span(values).first(got)) {
      build_binary32(value, word);
      au.write(as_text(word));
    }
  }
}

Outcome write_au(const std::string& res_name, const std::string& au_name,
                 const std::vector<std::uint8_t>& header, const char* missing_format) {
  if (same_file(res_name, au_name)) {
    say(missing_format, res_name.c_str());
    return {.cause = Cause::not_created, .name = au_name};
  }
  OutputFile au(au_name);
  if (!au) return au.outcome();
  au.write(as_text(header));
  const FilePtr res = open_regular_file(res_name, "rb");
  if (!res) {
    Outcome refused = au.refuse(input_failure(res_name).cause, res_name);
    say(missing_format, res_name.c_str());
    return refused;
  }
  write_words(au, res.get());
  static_cast<void>(au.finish());
  return au.outcome();
}

std::optional<AuFormat> read_header(std::FILE* au) {
  std::array<std::uint8_t, au_fixed_part> bytes;
  if (!read_bytes(au, bytes)) return std::nullopt;
  const std::span<const std::uint8_t, au_fixed_part> fields = bytes;
  if (as_text(fields.first<4>()) != au_magic) return std::nullopt;
  return AuFormat{au_word(fields.subspan<4, 4>()), au_word(fields.subspan<12, 4>()),
                  au_word(fields.subspan<16, 4>()), au_word(fields.subspan<20, 4>())};
}

bool begins_big_endian(const std::string& name) {
  const FilePtr file = open_regular_file(name, "rb");
  std::array<std::uint8_t, 4> magic;
  return file && read_bytes(file.get(), magic) && as_text(magic) == ".snd";
}

/// A part of an AU file on its way into a sample file. Positions are bytes from the start.
class Cut {
 public:
  Cut(std::FILE* au, OutputFile& res, const AuFormat& header, float start, float end)
      : au_(au), res_(res), header_(header) {
    const double sample_size = header.encoding == au_int16 ? 2 : 4;
    first_ = byte_position(start, sample_size);
    last_ = byte_position(end, sample_size);
    // The rest of the header goes by in whole words.
    samples_ =
        au_fixed_part + (std::max<std::int64_t>(header.length - au_fixed_part, 0) + 3) / 4 * 4;
  }

  void run() {
    if (header_.encoding == au_int16) copy_every_second_integer();
    if (header_.encoding == au_float) copy_numbers(0, 32);
    if (header_.encoding == au_halves) copy_numbers(2, 16);
  }

 private:
  // In double: a time of 1e30 seconds is as good as any, and not-a-number selects nothing.
  double byte_position(float seconds, double sample_size) const {
    return std::trunc(static_cast<double>(header_.length) +
                      static_cast<double>(seconds) * sampling_rate * sample_size);
  }

  bool selects(std::int64_t position) const {
    return first_ <= static_cast<double>(position) && static_cast<double>(position) <= last_;
  }
  /// Whether nothing behind `position` can be selected any more (also for not-a-number).
  bool is_over(std::int64_t position) const { return !(static_cast<double>(position) <= last_); }
  /// Every now and then it is told how far the cut is.
  void tell_position(std::int64_t position) const {
    constexpr std::int64_t bytes_between_words = 1 << 14;
    if (position % bytes_between_words != 0) return;
    tell_done((static_cast<double>(position) - first_) / (end_ - first_));
  }
  std::int64_t index(std::int64_t position) const { return (position - header_.length) / 4; }

  /// Goes to the word with the first selected byte, or one before; nothing if there is none.
  std::optional<std::int64_t> go_to_first_word() {
    if (!(first_ <= last_) || fseeko(au_, 0, SEEK_END) != 0) return std::nullopt;
    const std::int64_t size = ftello(au_);
    end_ = std::min(last_, static_cast<double>(size));
    if (samples_ >= size || first_ >= static_cast<double>(size)) return std::nullopt;
    const double skipped = std::max(first_ - static_cast<double>(samples_), 0.0);
    const std::int64_t position = samples_ + static_cast<std::int64_t>(skipped) / 4 * 4;
    if (fseeko(au_, position, SEEK_SET) != 0) return std::nullopt;
    return position;
  }

  void copy_every_second_integer() {
    std::array<std::uint8_t, 2> bytes;
    std::int64_t position = go_to_first_word().value_or(-1);
    if (position < 0) return;
    for (int count = 0; !is_over(position) && read_bytes(au_, bytes); count ^= 1, position += 2) {
      tell_position(position);
      if (count == 1 && selects(position)) {
        write_integer_sample(res_, index(position), au_half_word(bytes));
      }
    }
  }

  /// Writes the number of `bits` bits that begins `offset` bytes into each word.
  void copy_numbers(int offset, int bits) {
    std::int64_t position = go_to_first_word().value_or(-1);
    if (position < 0) return;
    float value = value_before(position, offset, bits);
    std::array<std::uint8_t, 4> word;
    for (; !is_over(position) && read_bytes(au_, word); position += 4) {
      tell_position(position);
      decode(word, offset, bits, &value);
      if (selects(position + offset)) {
        write_sample(res_, index(position + offset), static_cast<double>(value));
      }
    }
  }

  static bool decode(std::span<const std::uint8_t, 4> word, int offset, int bits, float* value) {
    std::array<char, 33> text;
    return sbinary(text.data(), word.data() + offset, bits, value) == 0;
  }

  /// What a not-a-number at `position` repeats: the last number before it; 0 when there is none.
  float value_before(std::int64_t position, int offset, int bits) {
    std::array<std::uint8_t, 1 << 14> block;
    const std::int64_t end = position;
    float value = 0;
    for (bool found = false; !found && position > samples_;) {
      tell_alive();
      const std::int64_t size = std::min<std::int64_t>(position - samples_, block.size());
      position -= size;
      const auto bytes = std::span(block).first(static_cast<std::size_t>(size));
      if (fseeko(au_, position, SEEK_SET) != 0 || !read_bytes(au_, bytes)) break;
      for (std::size_t word = bytes.size(); word > 0 && !found; word -= 4) {
        found = decode(bytes.subspan(word - 4).first<4>(), offset, bits, &value);
      }
    }
    static_cast<void>(fseeko(au_, end, SEEK_SET));
    return value;
  }

  std::FILE* au_;
  OutputFile& res_;
  AuFormat header_;
  double first_ = 0;
  double last_ = 0;
  double end_ = 0;            // of what there is to read
  std::int64_t samples_ = 0;  // where they begin
};

}  // namespace

std::int32_t au_word(std::span<const std::uint8_t, 4> bytes) {
  std::uint32_t word = 0;
  for (std::size_t i = 4; i-- > 0;)
    word = word << 8 | bytes[i];
  return static_cast<std::int32_t>(word);
}

std::int16_t au_half_word(std::span<const std::uint8_t, 2> bytes) {
  return static_cast<std::int16_t>(bytes[0] | bytes[1] << 8);
}

bool read_bytes(std::FILE* file, std::span<std::uint8_t> bytes) {
  return std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

std::vector<std::uint8_t> au_header() {
  std::vector<std::uint8_t> bytes = leading_fields();
  for (const float value : summary) {
    std::array<std::uint8_t, 4> word = {};
    build_binary32(value, word);
    bytes.insert(bytes.end(), word.begin(), word.end());
  }
  bytes.resize(au_header_length);
  return bytes;
}

Outcome convert_to_au(const std::string& res_name, const std::string& au_name) {
  say("make_au_file\n");
  return watched(au_name, [&] {
    return write_au(res_name, au_name, au_header(), "make_au_file. no file %s\n");
  });
}

int make_au_file(const std::string& res_name, const std::string& au_name) {
  return convert_to_au(res_name, au_name).is_done() ? 0 : 1;
}

int make_au_file_32(const std::string& res_name, const std::string& au_name) {
  say("make_au_file_32\n");
  return write_au(res_name, au_name, header_of_halves(), "no file %s\n").is_done() ? 0 : 1;
}

namespace {

Outcome cut(const std::string& au_name, const std::string& res_name, double start_seconds,
            double end_seconds) {
  FilePtr au = open_regular_file(au_name, "rb");
  if (!au) {
    say("no file %s\n", au_name.c_str());
    return input_failure(au_name);
  }
  const bool onto_itself = same_file(au_name, res_name);
  OutputFile res(res_name, onto_itself ? OutputFile::Existing::empty_at_once
                                       : OutputFile::Existing::keep_until_finished);
  if (!res) {
    say("no file %s\n", res_name.c_str());
    return res.outcome();
  }
  if (onto_itself) au = open_regular_file(au_name, "rb");  // what is there now
  const std::optional<AuFormat> header = au ? read_header(au.get()) : std::nullopt;
  if (!header) {
    say("not au-file\n");
    return res.refuse(Cause::not_au_file, au_name);
  }
  if (header->length % 4 != 0) {
    say("cut_part wrong coding of au-header len=%d\n", static_cast<int>(header->length));
    static_cast<void>(read_console_char());
  }
  Cut(au.get(), res, *header, static_cast<float>(start_seconds), static_cast<float>(end_seconds))
      .run();
  static_cast<void>(res.finish());
  return res.outcome();
}

}  // namespace

Outcome cut_au(const std::string& au_name, const std::string& res_name, double start_seconds,
               double end_seconds) {
  return watched(res_name, [&] { return cut(au_name, res_name, start_seconds, end_seconds); });
}

int cut_part(const std::string& au_name, const std::string& res_name, double start_seconds,
             double end_seconds) {
  return cut_au(au_name, res_name, start_seconds, end_seconds).is_done() ? 0 : 1;
}

std::optional<AuFormat> au_format(const std::string& name) {
  const FilePtr file = open_regular_file(name, "rb");
  return file ? read_header(file.get()) : std::nullopt;
}

std::string au_remark(const std::string& name) {
  const auto format = au_format(name);
  if (!format) {
    if (!begins_big_endian(name)) return {};
    return "is a big-endian AU file: torve-batch import takes such files";
  }
  if (format->encoding == au_float && format->sampling_rate == sampling_rate &&
      format->channels == 1) {
    return {};
  }
  return "is not mono (1 channel), 44100 Hz, 32-bit floating point (encoding 6): channels " +
         std::to_string(format->channels) + ", " + std::to_string(format->sampling_rate) +
         " Hz, encoding " + std::to_string(format->encoding) +
         "; torve-batch import takes such files";
}

}  // namespace torve
