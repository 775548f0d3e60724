// "-" as a file name: standard input or output where a procedure wants a file.
//
// The procedures take names of regular files, so a stream goes through an unnamed temporary file,
// which the program reaches as /dev/fd/N.
#pragma once

#include <string>

#include "base/files.hpp"

namespace torve {

/// Whether a word is "-".
[[nodiscard]] bool names_stream(const std::string& word);

/// The name under which an input is read: the word itself, or for "-" that of a file with all of
/// standard input (a name of nothing if that cannot be had).
class InputName {
 public:
  explicit InputName(const std::string& word);
  [[nodiscard]] const std::string& name() const { return name_; }

 private:
  std::string name_;
  FilePtr copy_;
};

/// The name under which an output is written: the word itself, or for "-" that of a temporary file,
/// which deliver() copies to standard output. From then on lines that would go to standard output
/// go to standard error.
class OutputName {
 public:
  explicit OutputName(const std::string& word);
  ~OutputName();
  OutputName(const OutputName&) = delete;
  OutputName& operator=(const OutputName&) = delete;

  [[nodiscard]] const std::string& name() const { return name_; }

  /// 0; or 1 if standard output does not take all. Nothing to do for a word other than "-".
  [[nodiscard]] int deliver();

 private:
  std::string name_;
  FilePtr copy_;
  int output_ = -1;  // standard output, while standard error has its number
};

}  // namespace torve
