#include "app/signal/kept_file.hpp"

#include <algorithm>
#include <array>
#include <new>
#include <sys/stat.h>

#include "app/signal/sample_file.hpp"
#include "base/files.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

// Which file it was, and in which state.
struct Identity {
  dev_t device = 0;
  ino_t inode = 0;
  off_t bytes = 0;
  timespec written = {};

  bool operator==(const Identity& other) const {
    return device == other.device && inode == other.inode && bytes == other.bytes &&
           written.tv_sec == other.written.tv_sec && written.tv_nsec == other.written.tv_nsec;
  }
};

struct Entry {
  std::string name;
  FileForm form = FileForm::samples;
  Identity identity;
  KeptFile file;
};

// One more than there are panes: going back to the file before costs nothing.
std::array<Entry, 4> entries;
std::size_t next_entry = 0;

Identity identity_of(std::FILE* file) {
  struct stat status = {};
  if (fstat(fileno(file), &status) != 0) return {};
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

std::vector<float> all_values(std::FILE* file, SampleReader& reader, off_t bytes) {
  constexpr std::size_t block = 1 << 16;
  constexpr off_t usual_line = 16;  // bytes: an index, a blank, six decimals
  std::vector<float> values;
  values.reserve(static_cast<std::size_t>(bytes / usual_line));
  for (;;) {
    tell_read(file);
    const std::size_t before = values.size();
    values.resize(before + block);
    const std::size_t got = reader.read(std::span(values).subspan(before));
    values.resize(before + got);
    if (got < block) return values;
  }
}

KeptFile read_file(std::FILE* file, FileForm form, off_t bytes) {
  auto read = std::make_shared<FileValues>();
  SampleReader reader(file, pane_line_size);
  if (form == FileForm::spectrum) {
    const auto header = reader.next_line();
    if (!header) return nullptr;
    read->size = std::max(1, spectrum_size(*header).value_or(1));
  }
  read->values = all_values(file, reader, bytes);
  return read;
}

}  // namespace

namespace {

Outcome keep(const std::string& name, FileForm form, KeptFile* kept) {
  const FilePtr file = open_regular_file(name, "r");
  if (!file) return input_failure(name);
  const Identity identity = identity_of(file.get());
  for (Entry& entry : entries) {
    if (entry.file && entry.name == name && entry.form == form) {
      if (entry.identity == identity) {
        *kept = entry.file;
        return {};
      }
      entry = {};
    }
  }
  KeptFile read = read_file(file.get(), form, identity.bytes);
  if (!read) return {.cause = Cause::nothing_to_draw, .name = name};
  entries.at(next_entry) = {name, form, identity, read};
  next_entry = (next_entry + 1) % entries.size();
  *kept = std::move(read);
  return {};
}

}  // namespace

Outcome keep_file(const std::string& name, FileForm form, KeptFile* kept) try {
  return watched(name, [&] { return keep(name, form, kept); });
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory, .name = name};
}

bool release_kept_files() {
  bool any = false;
  for (Entry& entry : entries) {
    if (entry.file.use_count() != 1) continue;
    entry = {};
    any = true;
  }
  return any;
}

}  // namespace torve
