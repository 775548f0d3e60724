#include "base/files.hpp"

#include <array>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

#include "base/typed_names.hpp"

namespace torve {

namespace {

constexpr std::array<const char*, 3> directory_names = {"font", "fn2", "inc"};

std::filesystem::path executable_directory() {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::filesystem::path(".") : self.parent_path();
}

}  // namespace

FilePtr open_file(const std::string& name, const char* mode) {
  return FilePtr(std::fopen(name.c_str(), mode));
}

FilePtr open_regular_file(const std::string& name, const char* mode) {
  // Asked before opening: opening a named pipe would already wait for a writer.
  const std::string meant = meant_input(name);
  struct stat info = {};
  if (stat(meant.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return nullptr;
  return open_file(meant, mode);
}

std::string program_directory() {
  return (executable_directory() / "").string();
}

std::string data_directory(DataKind kind) {
  static const std::filesystem::path root =
      (executable_directory() / TORVE_DATA_FROM_BIN).lexically_normal();
  return (root / directory_names.at(static_cast<std::size_t>(kind)) / "").string();
}

FilePtr open_installed_file(const std::string& name, DataKind kind, const char* mode) {
  const std::string path = data_directory(kind) + name;
  FilePtr file = open_file(path, mode);
  return file ? std::move(file) : open_file(path, "rb");
}

FilePtr open_data_file(const std::string& name, DataKind kind, const char* mode) {
  FilePtr file = open_regular_file(name, mode);
  return file ? std::move(file) : open_installed_file(name, kind, mode);
}

std::string module_path(const std::string& name) {
  return (executable_directory() / TORVE_MODULES_FROM_BIN / name).lexically_normal().string();
}

bool same_file(const std::string& input, const std::string& output) {
  struct stat first = {};
  struct stat second = {};
  return stat(meant_input(input).c_str(), &first) == 0 &&
         stat(meant_output(output).c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

std::string strip_off_ending(const std::string& name) {
  return name.substr(0, name.rfind('.'));
}

}  // namespace torve
