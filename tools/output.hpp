// Writing a tool's result.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace torve {

/// Replaces the file at `path`; throws std::runtime_error when not every byte could be written.
inline void write_whole_file(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace torve
