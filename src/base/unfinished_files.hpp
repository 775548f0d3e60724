// Files that are being written when a signal ends the process.
//
// SIGINT, SIGTERM and SIGHUP can be told to remove them first. SIGKILL cannot.
#pragma once

#include <csignal>
#include <string>

namespace torve {

/// Holds SIGINT, SIGTERM and SIGHUP back while it lives; one that has come meanwhile counts then.
class EndingSignalsHeld {
 public:
  EndingSignalsHeld();
  ~EndingSignalsHeld();
  EndingSignalsHeld(const EndingSignalsHeld&) = delete;
  EndingSignalsHeld& operator=(const EndingSignalsHeld&) = delete;

 private:
  sigset_t before_;
};

/// The name of a file that goes when this object does, or when an ending signal comes first, unless
/// it is kept. Only so many names as a program writes files at a time (8) are seen by signals.
class UnfinishedFile {
 public:
  UnfinishedFile() = default;
  ~UnfinishedFile() { remove(); }
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  /// Takes charge of the file `name` (absolute), in place of the one before, which stays.
  void own(const std::string& name);
  [[nodiscard]] const std::string& name() const { return name_; }
  /// From here on it stays whatever happens.
  void keep();
  /// Removes it; nothing happens when there is none.
  void remove();

 private:
  std::string name_;
};

/// Removes all of them. May be called by a signal handler.
void remove_unfinished_files();

/// From now on the three signals remove them and then end the process as they did; those that are
/// ignored or caught already are left alone. An exit in the middle of writing removes them, too.
void clean_up_when_ended();

}  // namespace torve
