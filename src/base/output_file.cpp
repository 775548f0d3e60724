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

OutputFile::OutputFile(const std::string& name, Existing existing) : name_(name), target_(name) {
  struct stat info = {};
  if (existing == Existing::keep_until_finished && holds_content(name, &info)) {
    target_ = real_name(name);
    placing_ = info.st_nlink > 1 ? Placing::copy : Placing::rename;
    // Renaming over a file needs no permission to write to it; a refusal must stay one.
    usable_ = open_file(target_, "r+b") != nullptr;
    return;
  }
  const bool is_new = !exists(name);
  stream_ = open_for_writing(name);
  usable_ = stream_ != nullptr;
  if (usable_ && is_new) temporary_ = real_name(name);
}

OutputFile::~OutputFile() {
  discard();
}

void OutputFile::open_beside() {
  struct stat info = {};
  std::string pattern = target_ + ".XXXXXX";
  const int descriptor = placing_ == Placing::rename ? mkstemp(pattern.data()) : -1;
  if (descriptor >= 0) {
    temporary_ = pattern;
    stream_.reset(fdopen(descriptor, "w+b"));
    if (stat(target_.c_str(), &info) == 0) fchmod(descriptor, info.st_mode & 07777);
  } else {
    // The file must stay, or nothing may be created beside it: it is filled again at the end.
    placing_ = Placing::copy;
    stream_.reset(std::tmpfile());
  }
  if (!stream_) error_ = errno;
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
  flush();
  if (error_ == 0 && std::fflush(stream_.get()) != 0) error_ = errno;
  if (error_ == 0 && !place()) error_ = errno;
  if (error_ != 0) {
    std::printf("could not write %s: %s\n", name_.c_str(), std::strerror(error_));
  } else if (placing_ != Placing::copy) {
    temporary_.clear();
  }
  discard();
  return error_ == 0;
}

bool OutputFile::place() {
  if (placing_ == Placing::copy) return copy_into_target();
  // Closing reports what the file system kept back until now.
  if (std::fclose(stream_.release()) != 0) return false;
  return placing_ == Placing::direct || std::rename(temporary_.c_str(), target_.c_str()) == 0;
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
  std::rewind(stream_.get());
  for (std::size_t got; (got = std::fread(buffer_.data(), 1, buffer_.size(), stream_.get())) > 0;) {
    if (std::fwrite(buffer_.data(), 1, got, target.get()) != got) return false;
  }
  return std::fflush(target.get()) == 0 && ftruncate(descriptor, size) == 0;
}

void OutputFile::discard() {
  stream_.reset();
  if (!temporary_.empty()) std::remove(temporary_.c_str());
  temporary_.clear();
}

}  // namespace torve
