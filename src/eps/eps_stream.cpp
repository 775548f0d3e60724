#include "eps/eps_stream.hpp"

#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "base/output_file.hpp"

namespace torve {

FilePtr outstream;

namespace {

constexpr const char* default_template = "psexampl.dat";
constexpr const char* end_of_setup = "%%End_Setup";
constexpr int line_limit = 100;  // bytes a line of the template is read with

// The drawing collects in memory, so that an older file lasts until the new one is complete.
std::optional<OutputFile> output_file;
char* collected = nullptr;
std::size_t collected_bytes = 0;

void forget_output() {
  outstream.reset();
  std::free(collected);
  collected = nullptr;
  output_file.reset();
}

bool copy_line(std::FILE* from, char (&line)[line_limit]) {
  return std::fgets(line, line_limit, from) != nullptr && std::fputs(line, outstream.get()) >= 0;
}

// A line longer than the limit comes in pieces; only its first piece starts the line.
bool ends_line(const char* piece) {
  return std::strchr(piece, '\n') != nullptr;
}

// Copies up to the line behind the end of set-up, or everything when there is no such line; false
// when something could not be written.
bool copy_head(std::FILE* from) {
  char line[line_limit];
  bool at_line_start = true;
  bool found = false;
  while (!found && copy_line(from, line)) {
    found = at_line_start && std::strncmp(line, end_of_setup, std::strlen(end_of_setup)) == 0;
    at_line_start = ends_line(line);
  }
  while (found && !at_line_start && copy_line(from, line))
    at_line_start = ends_line(line);
  if (found) copy_line(from, line);
  return std::ferror(outstream.get()) == 0;
}

FilePtr open_template(const std::string& name) {
  FilePtr file = open_regular_file(name, "rb");
  if (!file) file = open_installed_file(name, DataKind::include, "rb");
  return file ? std::move(file) : open_installed_file(default_template, DataKind::include, "rb");
}

}  // namespace

FilePtr open_eps(const std::string& output, const std::string& template_name) {
  FilePtr template_file = open_template(template_name);
  if (!template_file) return nullptr;
  forget_output();
  output_file.emplace(output);
  if (*output_file) outstream.reset(open_memstream(&collected, &collected_bytes));
  if (!outstream || !copy_head(template_file.get())) {
    forget_output();
    return nullptr;
  }
  return template_file;
}

Outcome finish_eps(FilePtr template_file) {
  if (!outstream || !output_file) return {.cause = Cause::not_created};
  char line[line_limit];
  if (template_file) {
    while (copy_line(template_file.get(), line)) {
    }
  }
  bool written = std::ferror(outstream.get()) == 0;
  written = std::fclose(outstream.release()) == 0 && written;
  Outcome outcome = {.cause = Cause::no_memory};  // the drawing collects there
  if (written) {
    output_file->write({collected, collected_bytes});
    static_cast<void>(output_file->finish());
    outcome = output_file->outcome();
  }
  forget_output();
  return outcome;
}

int close_eps(FilePtr template_file) {
  return finish_eps(std::move(template_file)).is_done() ? 0 : 1;
}

void abandon_eps() {
  forget_output();
}

void write_eps_segment(int x1, int y1, int x2, int y2, int area_height) {
  if (!outstream) return;
  std::fprintf(outstream.get(), "Or moveto %d CX %d CX rmoveto %d CX %d CX rlineto stroke\n", x1,
               area_height - y1, x2 - x1, y1 - y2);
}

void write_eps_label(int font, int x, int y, int area_height, int line_height, const char* text) {
  if (!outstream) return;
  const char* face = font == 35 ? "Symbol" : "Times-Roman";
  const int size = font == 6 ? 12 : 10;
  std::fprintf(outstream.get(),
               "Or moveto %d CX %d CX rmoveto /%s findfont %d CX scalefont setfont (%s) show\n", x,
               area_height - y - line_height / 2, face, size, text);
}

}  // namespace torve
