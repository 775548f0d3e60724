#include "base/errors.hpp"

#include <cstdio>

#include "base/console.hpp"

namespace torve {

namespace {

int say(const char* line) {
  std::fputs(line, stdout);
  return 0;
}

int ask_to_overwrite() {
  say("copy_on_existing_file\n");
  const int answer = read_console_char();
  return answer == 'n' || answer == 'N' ? 0 : 1;
}

}  // namespace

const ErrorReporters console_reporters = {
    .cannot_find_file = [](const char*) { return say("cannot_find_file\n"); },
    .cannot_create_file = [](const char*) { return say("cannot_create_file\n"); },
    .no_memory = [] { return say("no_memory\n"); },
    .copy_on_existing_file = ask_to_overwrite,
    .illegal_pointer = [](int) { return say("illegal_pointer\n"); },
    .file_error = [](int) { return say("file_error\n"); },
    .use_bgeditor = [] { return say("Only for the background editor\n"); },
    .use_aeeditor = [] { return say("Only for the animation editor\n"); },
    .change_palette_info = [] { return say("change_palette_info\n"); },
    .no_cutbuffer = [] { return say("no_cut_buffer\n"); },
    .unknown_parameter = [](const char*) { return say("unknown_parameter\n"); },
};

namespace {
ErrorReporters in_force = console_reporters;
}

void set_error_reporters(const ErrorReporters& reporters) {
  in_force = reporters;
}

int cannot_find_file(const char* name) {
  return in_force.cannot_find_file(name);
}

int cannot_create_file(const char* name) {
  return in_force.cannot_create_file(name);
}

int no_memory() {
  return in_force.no_memory();
}

int copy_on_existing_file() {
  return in_force.copy_on_existing_file();
}

int illegal_pointer(int code) {
  return in_force.illegal_pointer(code);
}

int file_error(int code) {
  return in_force.file_error(code);
}

int use_bgeditor() {
  return in_force.use_bgeditor();
}

int use_aeeditor() {
  return in_force.use_aeeditor();
}

int change_palette_info() {
  return in_force.change_palette_info();
}

int no_cutbuffer() {
  return in_force.no_cutbuffer();
}

int unknown_parameter(const char* word) {
  return in_force.unknown_parameter(word);
}

}  // namespace torve
