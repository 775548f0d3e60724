#include "base/new_file.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/files.hpp"

namespace torve {

namespace {

constexpr int most_names = 1000;  // of one stem
constexpr mode_t for_the_user = 0600;

std::string numbered(const std::string& stem, int number) {
  return number == 1 ? stem : stem + "." + std::to_string(number);
}

/// The first name of this stem with which `make` succeeds; a name that exists is passed over.
template <typename Make>
std::string first_free_name(const std::string& stem, Make make) {
  for (int number = 1; number <= most_names; ++number) {
    std::string name = numbered(stem, number);
    if (make(name)) return name;
    if (errno != EEXIST) break;
  }
  return {};
}

FilePtr create(const std::string& name, mode_t mode) {
  const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  return FilePtr(descriptor < 0 ? nullptr : fdopen(descriptor, "wb"));
}

bool copy_all(std::FILE* from, std::FILE* to) {
  std::array<char, 1 << 16> bytes;
  for (std::size_t got; (got = std::fread(bytes.data(), 1, bytes.size(), from)) > 0;) {
    if (std::fwrite(bytes.data(), 1, got, to) != got) return false;
  }
  return std::ferror(from) == 0;
}

/// Closes a new file that was filled, or removes it.
bool complete(const std::string& name, FilePtr file, bool is_filled) {
  if (std::fclose(file.release()) == 0 && is_filled) return true;
  const int reason = errno;
  std::remove(name.c_str());
  errno = reason;
  return false;
}

bool copy_to(const std::string& name, const std::string& original) {
  struct stat info = {};
  const FilePtr from = open_file(original, "rb");
  if (!from || fstat(fileno(from.get()), &info) != 0) return false;
  FilePtr to = create(name, info.st_mode & 0777);
  if (!to) return false;
  const bool is_filled = copy_all(from.get(), to.get());
  return complete(name, std::move(to), is_filled);
}

}  // namespace

std::string write_new_file(std::span<const std::string> names, std::string_view text) {
  for (const std::string& stem : names) {
    std::string made = first_free_name(stem, [text](const std::string& name) {
      FilePtr file = create(name, for_the_user);
      if (!file) return false;
      const bool is_filled = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
      return complete(name, std::move(file), is_filled);
    });
    if (!made.empty()) return made;
  }
  return {};
}

std::string keep_content(const std::string& name, Keeping keeping) {
  return first_free_name(name + ".bak", [&](const std::string& second) {
    if (keeping == Keeping::link && link(name.c_str(), second.c_str()) == 0) return true;
    if (keeping == Keeping::link && errno == EEXIST) return false;
    return copy_to(second, name);  // not every file system has links
  });
}

}  // namespace torve
