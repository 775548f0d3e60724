#include "base/output_file.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/new_file.hpp"
#include "base/typed_names.hpp"

namespace torve {

namespace {

/// stat of an existing regular file with content that may be written to.
bool holds_content(const std::string& name, struct stat* info) {
  return stat(name.c_str(), info) == 0 && S_ISREG(info->st_mode) && info->st_size > 0;
}

bool exists(const std::string& name) {
  struct stat info = {};
  return stat(name.c_str(), &info) == 0;
}

/// A named pipe that nobody reads from is refused: to wait for a reader would stop the window.
FilePtr open_for_writing(const std::string& name) {
  struct stat info = {};
  if (stat(name.c_str(), &info) != 0 || !S_ISFIFO(info.st_mode)) return open_file(name, "wb");
  const int pipe = open(name.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  if (pipe < 0) return nullptr;
  fcntl(pipe, F_SETFL, O_WRONLY);  // writing may wait
  return FilePtr(fdopen(pipe, "wb"));
}

/// The name of an existing file with all links followed.
std::string real_name(const std::string& name) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(name, error);
  return error ? name : real.string();
}

}  // namespace

OutputFile::OutputFile(const std::string& name, Existing existing)
    : name_(name), path_(meant_output(name)), target_(path_) {
  struct stat info = {};
  if (holds_content(path_, &info)) {
    target_ = real_name(path_);
    placing_ = info.st_nlink > 1 ? Placing::copy : Placing::rename;
    // Renaming over a file needs no permission to write to it; a refusal must stay one.
    usable_ = open_file(target_, "r+b") != nullptr;
    if (usable_ && existing == Existing::empty_at_once) usable_ = empty_now();
    note_creation();
    return;
  }
  const bool is_new = !exists(path_);
  const EndingSignalsHeld held;  // until it is known what there is to remove
  stream_ = open_for_writing(path_);
  usable_ = stream_ != nullptr;
  if (usable_ && is_new) temporary_.own(real_name(path_));
  note_creation();
}

void OutputFile::note_creation() {
  created_ = usable_;
  if (!usable_ && error_ == 0) error_ = errno;
}

Outcome OutputFile::outcome() const {
  Outcome outcome = {.name = name_, .kept_as = kept_as_, .error = error_};
  if (!created_) outcome.cause = Cause::not_created;
  if (created_ && error_ != 0) outcome.cause = Cause::not_written;
  return outcome;
}

Outcome OutputFile::refuse(Cause cause, const std::string& name) {
  keep_old_content();
  static_cast<void>(finish());  // that this may fail changes nothing any more
  return {.cause = cause, .name = name, .kept_as = kept_as_};
}

OutputFile::~OutputFile() {
  discard();
}

bool OutputFile::open_temporary(const std::string& stem) {
  std::string pattern = stem + ".XXXXXX";
  const EndingSignalsHeld held;
  const int descriptor = mkstemp(pattern.data());
  if (descriptor < 0) return false;
  temporary_.own(pattern);
  stream_.reset(fdopen(descriptor, "w+b"));
  return true;
}

void OutputFile::open_beside() {
  struct stat info = {};
  if (open_temporary(target_)) {
    if (placing_ == Placing::rename && stat(target_.c_str(), &info) == 0)
      fchmod(fileno(stream_.get()), info.st_mode & 07777);
    return;
  }
  placing_ = Placing::copy;
  const std::string last = std::filesystem::path(target_).filename().string();
  if (!open_temporary(P_tmpdir "/" + last)) error_ = errno;
}

bool OutputFile::keep_now() {
  std::error_code error;
  const bool is_link = std::filesystem::is_symlink(path_, error);
  kept_as_ = keep_content(is_link ? target_ : path_,
                          placing_ == Placing::copy ? Keeping::copy : Keeping::link);
  if (kept_as_.empty()) return false;
  // Said as it was typed.
  if (!is_link) kept_as_.replace(0, path_.size(), name_);
  return true;
}

bool OutputFile::empty_now() {
  open_beside();
  if (error_ != 0 || !keep_now()) return false;
  const EndingSignalsHeld held;
  if (placing_ == Placing::rename) {
    if (std::rename(temporary_.name().c_str(), target_.c_str()) != 0) return false;
    temporary_.keep();
  } else {
    temporary_.remove();
    stream_ = open_file(target_, "wb");
  }
  placing_ = Placing::direct;
  return stream_ != nullptr;
}

void OutputFile::flush() {
  if (!stream_ && error_ == 0) open_beside();
  if (used_ != 0 && error_ == 0 && std::fwrite(buffer_.data(), 1, used_, stream_.get()) != used_) {
    error_ = errno;
  }
  used_ = 0;
}

char* OutputFile::reserve(std::size_t size) {
  if (used_ + size > buffer_.size()) flush();
  return buffer_.data() + used_;
}

void OutputFile::write(std::string_view bytes) {
  while (!bytes.empty()) {
    if (used_ == buffer_.size()) flush();
    const std::size_t part = std::min(bytes.size(), buffer_.size() - used_);
    std::memcpy(buffer_.data() + used_, bytes.data(), part);
    used_ += part;
    bytes.remove_prefix(part);
  }
}

bool OutputFile::finish() {
  if (!usable_) return false;
  usable_ = false;
  const bool keeps_old = keeps_old_ || (used_ == 0 && !stream_);
  flush();
  if (error_ == 0 && std::fflush(stream_.get()) != 0) error_ = errno;
  if (error_ == 0 && keeps_old && placing_ != Placing::direct && !keep_now()) error_ = errno;
  if (error_ == 0 && !place()) error_ = errno;
  if (error_ != 0) std::printf("could not write %s: %s\n", name_.c_str(), std::strerror(error_));
  if (is_half_filled_) {
    std::printf("all of it is in %s\n", temporary_.name().c_str());
    temporary_.keep();
  }
  discard();
  return error_ == 0;
}

bool OutputFile::place() {
  if (placing_ == Placing::copy) return copy_into_target();
  // Closing reports what the file system kept back until now.
  if (std::fclose(stream_.release()) != 0) return false;
  const EndingSignalsHeld held;
  if (placing_ == Placing::rename && std::rename(temporary_.name().c_str(), target_.c_str()) != 0) {
    return false;
  }
  temporary_.keep();
  return true;
}

bool OutputFile::copy_into_target() {
  const off_t size = ftello(stream_.get());
  const FilePtr target = open_file(target_, "r+b");
  if (!target) return false;
  const int descriptor = fileno(target.get());
  // With the room set aside before the first byte changes, a full disk cannot stop the copy.
  if (size > 0) {
    struct stat before = {};
    if (fstat(descriptor, &before) != 0) return false;
    errno = posix_fallocate(descriptor, 0, size);
    if (errno != 0) {
      const int reason = errno;
      if (ftruncate(descriptor, before.st_size) != 0) return false;
      errno = reason;
      return false;
    }
  }
  const EndingSignalsHeld held;
  std::rewind(stream_.get());
  is_half_filled_ = true;
  for (std::size_t got; (got = std::fread(buffer_.data(), 1, buffer_.size(), stream_.get())) > 0;) {
    if (std::fwrite(buffer_.data(), 1, got, target.get()) != got) return false;
  }
  is_half_filled_ = std::fflush(target.get()) != 0 || ftruncate(descriptor, size) != 0;
  if (!is_half_filled_) temporary_.remove();
  return !is_half_filled_;
}

void OutputFile::discard() {
  stream_.reset();
  temporary_.remove();
}

}  // namespace torve
