#include "app/inspect/part_file.hpp"

#include <cerrno>
#include <cstdio>
#include <string>

#include "base/files.hpp"
#include "base/number_text.hpp"

namespace torve {

namespace {

constexpr int most_parts = 10000;

bool write_lines(std::FILE* file, std::span<const float> values) {
  char line[longest_decimal + longest_fixed6 + 2];
  std::int64_t index = 0;
  for (const float value : values) {
    char* end = put_decimal(line, index++);
    *end++ = ' ';
    end = put_fixed6(end, static_cast<double>(value));
    *end++ = '\n';
    const auto length = static_cast<std::size_t>(end - line);
    if (std::fwrite(line, 1, length, file) != length) return false;
  }
  return true;
}

Outcome fill(FilePtr file, const std::string& name, std::span<const float> values) {
  const bool is_filled = write_lines(file.get(), values);
  if (std::fclose(file.release()) == 0 && is_filled) return {.name = name};
  const int reason = errno;
  std::remove(name.c_str());
  return {.cause = Cause::not_written, .name = name, .error = reason};
}

}  // namespace

Outcome write_part(std::span<const float> values) {
  std::string name;
  for (int number = 1; number <= most_parts; ++number) {
    name = "part" + std::to_string(number) + ".res";
    FilePtr file = open_file(name, "wxe");  // never over one that is there
    if (file) return fill(std::move(file), name, values);
    if (errno != EEXIST) break;
  }
  return {.cause = Cause::not_created, .name = name, .error = errno};
}

}  // namespace torve
