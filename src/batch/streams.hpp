// "-" as a file name: standard input or output where a procedure wants a file.
//
// The procedures take names of regular files, so a stream goes through an unnamed temporary file,
// which the program reaches as /dev/fd/N.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/files.hpp"
#include "base/outcome.hpp"

namespace torve {

/// Whether a word is "-".
[[nodiscard]] bool names_stream(const std::string& word);

/// "standard input" or "standard output" for the name that one of them has for the procedures, any
/// other name as it is.
[[nodiscard]] std::string shown_name(const std::string& name);

/// Is told what has been read from a stream, piece by piece, and says whether that is enough.
using Enough = std::function<bool(std::string_view piece)>;

/// So many lines of a sample file.
[[nodiscard]] Enough enough_lines(std::int64_t lines);
/// An AU file up to this time.
[[nodiscard]] Enough enough_seconds(double end_seconds);

/// The name under which an input is read: the word itself, or for "-" that of a file with so much
/// of standard input as is needed.
class InputName {
 public:
  explicit InputName(const std::string& word, const Enough& enough = nullptr);
  [[nodiscard]] const std::string& name() const { return name_; }
  /// Whether there is one.
  [[nodiscard]] const Outcome& outcome() const { return outcome_; }

 private:
  std::string name_;
  FilePtr copy_;
  Outcome outcome_;
};

/// From now on, while it lives, lines that would go to standard output go to standard error.
class OutputAside {
 public:
  OutputAside();
  ~OutputAside();
  OutputAside(const OutputAside&) = delete;
  OutputAside& operator=(const OutputAside&) = delete;

  /// Writes the rest of `file`, or `text`, to what is standard output otherwise.
  Outcome write(std::FILE* file) const;
  Outcome write(std::string_view text) const;

 private:
  int output_;
};

/// The name under which an output is written: the word itself, or for "-" that of a temporary file,
/// which deliver() copies to standard output. From then on lines that would go to standard output
/// go to standard error.
class OutputName {
 public:
  explicit OutputName(const std::string& word);

  [[nodiscard]] const std::string& name() const { return name_; }
  /// Whether there is one.
  [[nodiscard]] const Outcome& outcome() const { return outcome_; }

  /// Hands over what has been written, for "-".
  Outcome deliver();

 private:
  std::string name_;
  FilePtr copy_;
  Outcome outcome_;
  std::unique_ptr<OutputAside> aside_;
};

}  // namespace torve
