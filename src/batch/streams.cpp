#include "batch/streams.hpp"

#include <array>
#include <cstdio>
#include <unistd.h>

namespace torve {

namespace {

std::string name_of(const FilePtr& file) {
  return file ? "/dev/fd/" + std::to_string(fileno(file.get())) : std::string();
}

bool copy_bytes(std::FILE* from, std::FILE* to) {
  std::array<char, 1 << 16> bytes;
  for (std::size_t got; (got = std::fread(bytes.data(), 1, bytes.size(), from)) > 0;) {
    if (std::fwrite(bytes.data(), 1, got, to) != got) return false;
  }
  return std::ferror(from) == 0 && std::fflush(to) == 0;
}

}  // namespace

bool names_stream(const std::string& word) {
  return word == "-";
}

InputName::InputName(const std::string& word) : name_(word) {
  if (!names_stream(word)) return;
  copy_.reset(std::tmpfile());
  if (copy_ && !copy_bytes(stdin, copy_.get())) copy_.reset();
  name_ = name_of(copy_);
}

OutputName::OutputName(const std::string& word) : name_(word) {
  if (!names_stream(word)) return;
  copy_.reset(std::tmpfile());
  name_ = name_of(copy_);
  std::fflush(stdout);
  output_ = dup(STDOUT_FILENO);
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

OutputName::~OutputName() {
  if (output_ < 0) return;
  std::fflush(stdout);
  dup2(output_, STDOUT_FILENO);
  close(output_);
}

int OutputName::deliver() {
  if (output_ < 0) return 0;
  if (!copy_) return 1;
  // What the procedure wrote came through another stream on the same file.
  std::rewind(copy_.get());
  const FilePtr output(fdopen(dup(output_), "wb"));
  return output && copy_bytes(copy_.get(), output.get()) ? 0 : 1;
}

}  // namespace torve
