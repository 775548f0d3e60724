#include "diagram/diagram_file.hpp"

#include <cstdio>
#include <optional>
#include <pwd.h>
#include <string>
#include <unistd.h>
#include <utility>

#include "base/errors.hpp"
#include "base/files.hpp"
#include "base/new_file.hpp"
#include "base/output_file.hpp"
#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/history.hpp"
#include "diagram/model/diagram_input.hpp"
#include "diagram/model/diagram_text.hpp"
#include "diagram/model/kept_diagram.hpp"
#include "diagram/restore.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/strip.hpp"
#include "display/screen_state.hpp"
#include "eps/eps_stream.hpp"
#include "figure/request/make_figure.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

constexpr const char* rescue_name = "figure.vob.bak";
constexpr const char* directory_for_anybody = P_tmpdir "/";
constexpr const char* eps_template = "psdiagram.dat";

Outcome write_diagram(const char* name) {
  OutputFile file(name);
  if (!file) return file.outcome();
  file.write(diagram_to_text(keep_diagram()));
  const bool written = file.finish();
  Outcome outcome = file.outcome();
  if (!written && outcome.is_done()) outcome = {.cause = Cause::not_written, .name = name};
  return outcome;
}

// As the user database has it: HOME may lead anywhere.
std::string home_directory() {
  const passwd* const user = getpwuid(getuid());
  return (user != nullptr && user->pw_dir != nullptr ? std::string(user->pw_dir) : "") + "/";
}

int refuse(const std::string& why, int code) {
  std::printf("%s\n", why.c_str());
  file_error(code);
  say_in_strip(why);
  return 1;
}

int result_of(const Outcome& outcome) {
  show_outcome(outcome);
  return outcome.is_done() ? 0 : 1;
}

// Every figure into the EPS file, which draws it on the canvas, too.
void print_figures() {
  const CanvasPaint beneath_windows(diagram_area(), PaintOn::figures);
  const Kept rows(Y1_min, Y1_max);
  Y1_min = 0;
  Y1_max = yymax;
  lift_figures();
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (figure->phase != 0) draw_vobj(VectorMode::eps, figure, figure_draw);
  }
}

// By one that has nothing unsaved, and counts its figures for itself.
void replace_diagram(const KeptDiagram& diagram) {
  prepare_change();
  restart_identities();
  restore_diagram(diagram);
  note_change();
  diagram_was_saved();
}

}  // namespace

int save_diagram(const char* name) {
  const Outcome outcome = write_diagram(name);
  if (outcome.is_done()) diagram_was_saved();
  return result_of(outcome);
}

int read_diagram(const char* name) {
  const FilePtr file = open_regular_file(name, "rb");
  if (!file) return result_of(input_failure(name));
  const std::optional<std::string> text = diagram_file_contents(file.get());
  if (!text) return refuse(std::string(name) + " is too large or cannot be read", 0);
  int bad_line = 0;
  const std::optional<KeptDiagram> diagram = diagram_from_text(*text, &bad_line);
  if (!diagram) {
    return refuse(std::string(name) + " line " + std::to_string(bad_line) + " not read", bad_line);
  }
  pointer_ope();
  replace_diagram(*diagram);
  return 0;
}

int new_diagram() {
  exit_ope();
  replace_diagram({});
  return 0;
}

int print_diagram(const char* name) {
  FilePtr template_file = open_eps(name, eps_template);
  if (!template_file) return result_of({.cause = Cause::not_created, .name = name});
  print_figures();
  return result_of(finish_eps(std::move(template_file)));
}

int draw_diagram_figure(const char* name, FigureFormat format) {
  const KeptDiagram diagram = keep_diagram();
  if (diagram.empty()) return result_of({.cause = Cause::nothing_to_draw, .name = name});
  const FigureInput input = {.name = figure_input_in_memory, .source = FigureSource::diagram};
  return result_of(
      make_figure({.format = format, .inputs = {input}}, name, diagram_to_text(diagram)));
}

void rescue_diagram() {
  if (!diagram_is_unsaved() || keep_diagram().empty()) return;
  const std::string places[] = {rescue_name, home_directory() + rescue_name,
                                directory_for_anybody + std::string(rescue_name)};
  const std::string saved = write_new_file(places, diagram_to_text(keep_diagram()));
  if (saved.empty()) {
    std::printf("the diagram could not be saved\n");
  } else {
    std::printf("diagram saved in %s\n", saved.c_str());
  }
}

}  // namespace torve
