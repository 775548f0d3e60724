// The message window: object 1, a text window over "messages.txt".
//
// An error shows two lines of that file and perhaps a detail beside them. The window stays until
// something else is touched; a second error does not show before it has gone. An error reported
// while an object is lifted waits until that has been put down.
//
// Before there is a message window, and in terminal mode, errors are lines on standard output.
#pragma once

#include "base/errors.hpp"

namespace torve {

/// Fills slot 1: a hidden window without scroll bars, of fixed size.
void create_message_window();

/// The error functions that show the message window, for set_error_reporters.
[[nodiscard]] const ErrorReporters& message_reporters();

/// Errors that no room below knows of; `name` is the file concerned. Results as of the others.
int too_few_samples(const char* name);
int no_match_near_start(const char* name);
int not_a_signal(const char* name);
int spectrum_wanted_first();

/// Whether the message window lies on the canvas.
[[nodiscard]] bool message_is_shown();

/// Shows the error that has waited for an object to be put down, if there is one.
void show_waiting_message();

/// Whether a message can be shown now: 1 in terminal mode, or when the message window is hidden,
/// not an icon and not being served.
[[nodiscard]] int remove_current_errormsg();

/// Draws the detail of the present message into its window; the kind calls it after the text.
void draw_message_detail();

/// No error waits, none is shown.
void reset_messages();

}  // namespace torve
