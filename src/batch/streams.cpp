#include "batch/streams.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <map>
#include <span>
#include <unistd.h>

#include "app/signal/au_file.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "base/console.hpp"

namespace torve {

namespace {

constexpr const char* standard_input = "standard input";
constexpr const char* standard_output = "standard output";

// State: what the temporary files stand for.
std::map<std::string, const char*> stream_names;

std::string name_of(const FilePtr& file, const char* stream) {
  if (!file) return {};
  std::string name = "/dev/fd/" + std::to_string(fileno(file.get()));
  stream_names[name] = stream;
  return name;
}

/// In pieces as they come: what is enough may be all that comes for a long time.
bool copy_input(std::FILE* to, const Enough& enough) {
  std::array<char, 1 << 16> bytes;
  for (;;) {
    const ssize_t got = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    const auto size = static_cast<std::size_t>(got);
    if (std::fwrite(bytes.data(), 1, size, to) != size) return false;
    if (size == 0 || (enough && enough({bytes.data(), size}))) return std::fflush(to) == 0;
  }
}

bool write_all(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = write(descriptor, bytes.data(), bytes.size());
    if (put < 0 && errno != EINTR) return false;
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(put, 0)));
  }
  return true;
}

Outcome output_failure() {
  return {.cause = Cause::not_written, .name = standard_output, .error = errno};
}

}  // namespace

bool names_stream(const std::string& word) {
  return word == "-";
}

std::string shown_name(const std::string& name) {
  const auto stream = stream_names.find(name);
  return stream != stream_names.end() ? stream->second : name;
}

Enough enough_lines(std::int64_t lines) {
  // As the readers of samples cut them.
  constexpr std::int64_t longest = analysis_line_size - 1;
  return [lines, length = std::int64_t{0}](std::string_view piece) mutable {
    for (const char character : piece) {
      ++length;
      if (character != '\n' && length < longest) continue;
      length = 0;
      --lines;
    }
    return lines <= 0;
  };
}

Enough enough_seconds(double end_seconds) {
  return [end_seconds, head = std::string(), bytes = 0.0](std::string_view piece) mutable {
    bytes += static_cast<double>(piece.size());
    head += piece.substr(0, au_fixed_part - std::min<std::size_t>(head.size(), au_fixed_part));
    if (head.size() < au_fixed_part) return false;
    if (!head.starts_with(au_magic)) return true;  // refused whatever follows
    const auto fields = std::span(reinterpret_cast<const std::uint8_t*>(head.data()), head.size());
    constexpr double widest_sample = 4;
    const double samples_begin = std::max(au_word(fields.subspan<4, 4>()), au_fixed_part);
    return bytes > samples_begin + (end_seconds * sampling_rate + 2) * widest_sample;
  };
}

InputName::InputName(const std::string& word, const Enough& enough) : name_(word) {
  if (!names_stream(word)) return;
  copy_.reset(std::tmpfile());
  name_ = name_of(copy_, standard_input);
  const bool is_there = copy_ && !started_without(STDIN_FILENO);
  if (is_there && copy_input(copy_.get(), enough)) return;
  outcome_ = {
      .cause = Cause::unreadable, .name = standard_input, .error = is_there ? errno : EBADF};
}

OutputAside::OutputAside() {
  std::fflush(stdout);
  output_ = dup(STDOUT_FILENO);
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

OutputAside::~OutputAside() {
  std::fflush(stdout);
  dup2(output_, STDOUT_FILENO);
  close(output_);
}

Outcome OutputAside::write(std::string_view text) const {
  return write_all(output_, text) ? Outcome{} : output_failure();
}

Outcome OutputAside::write(std::FILE* file) const {
  std::array<char, 1 << 16> bytes;
  for (std::size_t got; (got = std::fread(bytes.data(), 1, bytes.size(), file)) > 0;) {
    if (!write_all(output_, {bytes.data(), got})) return output_failure();
  }
  return std::ferror(file) == 0 ? Outcome{} : output_failure();
}

OutputName::OutputName(const std::string& word) : name_(word) {
  if (!names_stream(word)) return;
  copy_.reset(std::tmpfile());
  name_ = name_of(copy_, standard_output);
  const bool is_there = copy_ && !started_without(STDOUT_FILENO);
  if (!is_there)
    outcome_ = {
        .cause = Cause::not_created, .name = standard_output, .error = copy_ ? EBADF : errno};
  aside_ = std::make_unique<OutputAside>();
}

Outcome OutputName::deliver() {
  if (!aside_ || !outcome_.is_done()) return outcome_;
  // What the procedure wrote came through another stream on the same file.
  std::rewind(copy_.get());
  return aside_->write(copy_.get());
}

}  // namespace torve
