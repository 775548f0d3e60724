// Standard output and input beside a window.
//
// A line on standard output is also a sign of life of a long computation, and a wait for
// standard input stops the program. At both moments the screen must show what has been drawn.
// The display registers how; a program without a window registers nothing.
#pragma once

namespace torve {

using ScreenService = void (*)();

/// Registers what brings the screen up to date (and answers pending expose events); null for none.
void set_screen_service(ScreenService service);

/// Registers what serves the window until a file descriptor can be read; null for none. Standard
/// input is unbuffered from then on: what has been read ahead no descriptor shows.
void set_input_waiter(void (*wait_until_readable)(int descriptor));

/// Brings the screen up to date. Called at the progress lines of long computations.
void serve_screen();

/// Reads one byte of standard input, 0 to 255, after bringing the screen up to date and, when a
/// waiter is registered, waiting with it; EOF at the end of input.
[[nodiscard]] int read_console_char();

/// Whether standard input is a terminal in whose background the program runs. Reading there fails
/// at once, setting it would stop the program.
[[nodiscard]] bool is_in_background();

/// What every program of ours does first: standard streams that are closed lead to /dev/null,
/// standard output goes line by line (readers behind a pipe see each line at once), SIGPIPE,
/// SIGTTIN and SIGXFSZ are ignored (a closed pipe or a file beyond the size allowed is a write
/// error, a background read an end of input; none of them stops the program), signals that end the
/// program remove the files that it has not finished.
void set_up_console();

/// Whether standard stream 0, 1 or 2 was closed when the console was set up.
[[nodiscard]] bool started_without(int stream);

}  // namespace torve
