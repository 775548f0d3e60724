// What became of something that can fail: a value that says why, and of which file.
#pragma once

#include <string>

namespace torve {

enum class Cause {
  done,
  no_file,
  unreadable,   // there is one, but it is no regular file, or not for this user
  not_created,  // an output that cannot be written to
  not_written,  // an output that came to nothing on the way: a full disk
  no_memory,
  too_few_samples,  // for a match or a spectrum
  no_match,         // no offset near the start leaves a finite difference
  negative_start,   // of a match
  not_au_file,
  no_spectrum,       // for a filter: none has been computed yet
  start_behind_end,  // a plot that skips more lines than there are
  nothing_to_draw,   // a file without a sample
  unknown_ending,    // a name that does not say what kind of file it is
  not_sound,         // a file that is not known as sound, or is damaged
  out_of_range,      // a channel or a time that a file does not have
  silent,            // a signal without a sound, or with none that is asked for
  no_codec,          // the part of the program that knows sound files
  not_run,           // a program of ours that could not be started, or did not come to its end
  cancelled,         // by the user; the output is as it was
};
inline constexpr Cause last_cause = Cause::cancelled;

struct [[nodiscard]] Outcome {
  Cause cause = Cause::done;
  std::string name = {};     // of the file concerned, or none
  std::string kept_as = {};  // where the old content of an output without a result is now; or empty
  int error = 0;             // errno, where the system gave a reason
  std::string reason = {};   // in words, where a library gave one

  [[nodiscard]] bool is_done() const { return cause == Cause::done; }
};

/// Why the input `name` could not be opened.
Outcome input_failure(const std::string& name);

/// "NAME: what is the matter (the system's reason)", or what was cancelled; empty for what is done.
[[nodiscard]] std::string sentence(const Outcome& outcome);

}  // namespace torve
