#include "diagram/model/diagram_input.hpp"

#include <array>

#include "base/files.hpp"
#include "diagram/model/diagram_text.hpp"

namespace torve {

std::optional<std::string> diagram_file_contents(std::FILE* file) {
  constexpr std::size_t largest_file = std::size_t{8} << 20;  // bytes
  std::string text;
  std::array<char, 1 << 14> piece;
  for (;;) {
    const std::size_t size = std::fread(piece.data(), 1, piece.size(), file);
    text.append(piece.data(), size);
    if (text.size() > largest_file || std::ferror(file) != 0) return std::nullopt;
    if (size < piece.size()) return text;
  }
}

Outcome read_diagram_file(const std::string& name, KeptDiagram* diagram) {
  const FilePtr file = open_regular_file(name, "rb");
  if (!file) return input_failure(name);
  const auto text = diagram_file_contents(file.get());
  if (!text) return {.cause = Cause::unreadable, .name = name};
  int bad_line = 0;
  auto read = diagram_from_text(*text, &bad_line);
  if (!read)
    return {.cause = Cause::unreadable, .name = name + " line " + std::to_string(bad_line)};
  *diagram = std::move(*read);
  return {.cause = Cause::done, .name = name};
}

}  // namespace torve
