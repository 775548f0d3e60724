#include "batch/warnings.hpp"

#include <cstdio>

#include "app/signal/au_file.hpp"
#include "base/files.hpp"
#include "batch/streams.hpp"

namespace torve {

namespace {

/// "0.5 1.25": the readers take the part behind the first point as the value.
bool has_time(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(" \t+-");
  if (begin == std::string_view::npos) return false;
  const std::size_t end = line.find_first_not_of("0123456789", begin);
  return end != std::string_view::npos &&
         (line[end] == '.' || line[end] == 'e' || line[end] == ',');
}

}  // namespace

void warn(const std::string& name, const std::string& what) {
  std::fprintf(stderr, "torve-batch: warning: %s %s\n", shown_name(name).c_str(), what.c_str());
}

void warn_about_signal(const std::string& name, const SampleRange& range, Taken taken) {
  const FilePtr file = open_regular_file(name, "r");
  if (!file) return;
  SampleReader reader(file.get(), analysis_line_size);
  const std::int64_t last_taken =
      taken == Taken::whole ? range.end : std::int64_t{range.first} + most_samples;
  std::int64_t lines = 0;
  bool is_timed = false;
  while (lines < range.end && lines <= last_taken) {
    const auto line = reader.next_line();
    if (!line) break;
    is_timed = is_timed || has_time(*line);
    ++lines;
  }
  if (is_timed) {
    warn(name, "has a time, not a whole number, in its first column: values are not as written");
  }
  if (lines > last_taken) {
    warn(name, "has more than " + std::to_string(most_samples) +
                   " lines: the first of them alone are taken");
  }
}

void warn_about_au(const std::string& name) {
  const std::string remark = au_remark(name);
  if (!remark.empty()) warn(name, remark);
}

void warn_if_empty(const std::string& name) {
  const FilePtr file = open_regular_file(name, "r");
  if (file && std::fgetc(file.get()) == EOF) warn(name, "has no samples: none lie in the range");
}

}  // namespace torve
