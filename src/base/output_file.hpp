// A file being written: nothing of it counts until one checked call says that all of it arrived.
//
// Where the name already leads to a file with content, that content stays until the new one is
// complete: the new one is written beside it, from the first full buffer on, and takes its place
// at the end. Symbolic links are followed; permissions, and the other names of a file that has
// several, stay. A device, or a pipe that somebody reads from, is written directly.
//
// Old content that no result takes the place of is not lost: it is kept as NAME.bak, or NAME.bak.2
// and so on when there is such a file. That goes for a file emptied at once, for one that is
// finished without a byte, and for one whose writer asks for it.
//
// A file with several names, or in a directory where none can be made, is filled again at the end.
// Signals wait meanwhile, and the whole new content has a name, beside it or in the directory for
// temporary files, until that is done.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "base/files.hpp"
#include "base/outcome.hpp"
#include "base/unfinished_files.hpp"

namespace torve {

class OutputFile {
 public:
  enum class Existing {
    keep_until_finished,  // the old content is lost only to a complete new one
    empty_at_once         // the file is empty now; readers who have it open may see the old content
  };

  /// Creates the file or prepares to replace it; test the object for success.
  explicit OutputFile(const std::string& name, Existing existing = Existing::keep_until_finished);
  /// Without a successful finish(): old content is as it was, a new file is gone.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Whether the file can be written to.
  explicit operator bool() const { return usable_; }

  void write(std::string_view bytes);

  /// Room for `size` bytes, at most buffer_size, to be filled and then counted with advance().
  [[nodiscard]] char* reserve(std::size_t size);
  void advance(std::size_t size) { used_ += size; }

  /// What became of it; while it is being written, whether it can be.
  [[nodiscard]] Outcome outcome() const;

  /// Finishes what is no result because of `cause`, which concerns `name`: says so.
  Outcome refuse(Cause cause, const std::string& name);

  /// What is being written is no result: old content will be kept.
  void keep_old_content() { keeps_old_ = true; }

  /// The name under which old content has been kept; empty when none was.
  [[nodiscard]] const std::string& kept_as() const { return kept_as_; }

  /// Completes the file and puts it in its place. On failure says "could not write NAME: REASON"
  /// on standard output, undoes as the destructor does, and returns false. When that is too late
  /// because a file was being filled again, says where the whole of it is. Old content that can
  /// not be kept is a failure. Ends the object's use.
  [[nodiscard]] bool finish();

  static constexpr std::size_t buffer_size = 1 << 16;

 private:
  enum class Placing { direct, rename, copy };

  void note_creation();
  void open_beside();
  bool open_temporary(const std::string& stem);
  void flush();
  bool empty_now();
  bool keep_now();
  bool place();
  bool copy_into_target();
  void discard();

  std::string name_;          // as it was given, for what is said
  std::string path_;          // of the file that it means
  std::string target_;        // path_ with its links followed
  UnfinishedFile temporary_;  // what goes when it comes to nothing
  Placing placing_ = Placing::direct;
  bool usable_ = false;
  bool created_ = false;
  bool keeps_old_ = false;
  std::string kept_as_;
  FilePtr stream_;
  int error_ = 0;                // errno of the first failed write
  bool is_half_filled_ = false;  // the target is neither what it was nor what it shall be
  std::size_t used_ = 0;
  std::array<char, buffer_size> buffer_;
};

}  // namespace torve
