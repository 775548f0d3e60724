// Errors that the user must see.
//
// Any room may report one; how it is shown is a table that an upper room may replace. From the
// start it holds the console form: the function's name, a line on standard output.
// Results are 0 when the error was shown and 1 when it could not be, but for the question.
#pragma once

namespace torve {

struct ErrorReporters {
  int (*cannot_find_file)(const char* name);
  int (*cannot_create_file)(const char* name);
  int (*no_memory)();
  int (*copy_on_existing_file)();
  int (*illegal_pointer)(int code);
  int (*file_error)(int code);
  int (*use_bgeditor)();
  int (*use_aeeditor)();
  int (*change_palette_info)();
  int (*no_cutbuffer)();
  int (*unknown_parameter)(const char* word);
};

/// The console form.
extern const ErrorReporters console_reporters;

/// Makes `reporters` (copied) the way errors are shown from now on.
void set_error_reporters(const ErrorReporters& reporters);

int cannot_find_file(const char* name);
int cannot_create_file(const char* name);
int no_memory();
int illegal_pointer(int code);
int file_error(int code);
int unknown_parameter(const char* word);

// Not used by the workbench itself.

/// Asks whether an existing file may be overwritten: 1 for yes, 0 for no.
int copy_on_existing_file();

int use_bgeditor();
int use_aeeditor();
int change_palette_info();
int no_cutbuffer();

}  // namespace torve
