#include "dialogs/messages.hpp"

#include <array>
#include <cstdio>
#include <cstring>
#include <string>

#include "base/files.hpp"
#include "dialogs/file_window.hpp"
#include "dialogs/text_lines.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/menu_lines.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr const char* file_name = "messages.txt";
constexpr int window_columns = 20;
constexpr int window_y = 200;
constexpr int text_ink = 15;
constexpr int window_paper = 4;
constexpr int question_paper = 0;
constexpr int frame_colour = 2;

// Layout of one message; a message has two lines of the file.
struct Message {
  int first_line;
  int columns = window_columns;    // of the window
  int blanks = 0;                  // before the detail, as far as there is room for them
  const char* built_in = nullptr;  // the first line, for a file of one's own that lacks it
};

constexpr Message missing_file = {.first_line = 0, .blanks = 13};
constexpr Message unwritable_file = {.first_line = 2};
constexpr Message memory_short = {.first_line = 4};
constexpr Message overwrite_question = {.first_line = 6, .columns = 23};
constexpr Message bad_pointer = {.first_line = 8};
constexpr Message bad_file = {.first_line = 10};
constexpr Message background_editor = {.first_line = 12, .columns = 40};
constexpr Message animation_editor = {.first_line = 14, .columns = 40};
constexpr Message palette_changed = {.first_line = 16, .columns = 60};
constexpr Message nothing_cut = {.first_line = 18};
constexpr Message bad_parameter = {.first_line = 20, .columns = 33};
constexpr Message samples_short = {.first_line = 22, .built_in = "Too few samples"};
constexpr Message match_missing = {
    .first_line = 24, .columns = 22, .built_in = "No match near start"};
constexpr Message no_signal = {.first_line = 26, .built_in = "Not a signal"};
constexpr Message spectrum_missing = {
    .first_line = 28, .columns = 24, .built_in = "Spectrum wanted first"};

// The palette's message lies elsewhere and is taller.
constexpr int palette_x = 120, palette_y = 400, palette_rows = 5;

// State: the message that the window shows, and the one that waits.
std::string shown_detail;
const char* shown_text = nullptr;  // in place of the file's lines, which it lacks
int detail_paper = window_paper;
const Message* waiting = nullptr;
std::string waiting_detail;
bool showing = false;  // what goes wrong meanwhile is not reported again

WdObject& window() {
  return wd(message_window_id);
}

bool on_console() {
  return term == text_console || window().kind == kind_free;
}

// --- size ---------------------------------------------------------------------------------------

Rect place_of(const Message& message) {
  const WdObject& now = window();
  const int height = 3 * cs + 2 * cr;
  if (&message == &palette_changed) {
    return {palette_x, palette_y, palette_x + message.columns * cs, palette_y + palette_rows * cr};
  }
  return {now.x, now.y, now.x + message.columns * cs, now.y + height};
}

// A size that no memory can be had for stays what it was: the message is cut then.
void resize(const Rect& place) {
  WdObject& object = window();
  const Rect before = rect_of(object);
  object.width = place.width();
  object.height = place.height();
  const bool same_size = before.width() == object.width && before.height() == object.height;
  if (!same_size && change_background(message_window_id) != 0) {
    object.width = before.width();
    object.height = before.height();
    return;
  }
  object.x = place.x1;
  object.y = place.y1;
  keep_on_canvas(object, true);
}

// --- showing ------------------------------------------------------------------------------------

std::string with_blanks(const Message& message, const std::string& detail) {
  const int room = message.columns - 3 - static_cast<int>(detail.size());
  const int blanks = std::max(0, std::min(message.blanks, room));
  return std::string(static_cast<std::size_t>(blanks), ' ') + detail;
}

int lines_of_file() {
  const FilePtr file = open_data_file(file_name, DataKind::include, "r");
  return measure_text(file.get()).lines;
}

// 0 when the window shows the message.
int put_window(const Message& message, const std::string& detail, int paper) {
  const Kept guard(showing);
  showing = true;
  resize(place_of(message));
  window().scroll_column = 0;
  window().scroll_line = message.first_line;
  shown_detail = with_blanks(message, detail);
  shown_text = lines_of_file() > message.first_line ? nullptr : message.built_in;
  detail_paper = paper;
  return put_wd_objects(message_window_id, message_window_id);
}

int show(const Message& message, const std::string& detail) {
  if (showing) return 1;
  if (lifted_object() != 0) {
    if (waiting != nullptr) return 1;
    waiting = &message;
    waiting_detail = detail;
    return 0;
  }
  if (remove_current_errormsg() == 0) return 1;
  return put_window(message, detail, window_paper);
}

void put_away(const Rect& place) {
  hide_errormsg();
  resize(place);
}

// Shows a message that is not left lying: what `wait` does decides when it goes.
template <typename Wait>
bool show_while(const Message& message, const char* detail, int paper, Wait wait) {
  if (showing || lifted_object() != 0) return false;
  hide_errormsg();  // an older message has been read by now
  if (remove_current_errormsg() == 0) return false;
  const Rect place = rect_of(window());
  if (put_window(message, detail, paper) != 0) return false;
  wait();
  put_away(place);
  return true;
}

int say(const char* text) {
  std::fputs(text, stdout);
  return 0;
}

// --- the error functions ------------------------------------------------------------------------

int report_word(const Message& message, const char* word, int (*console)(const char*)) {
  return on_console() ? console(word) : show(message, word);
}

// Names are told apart by their ends; the strip has them whole.
int report_name(const Message& message, const char* name, int (*console)(const char*)) {
  constexpr std::size_t most_characters = 17;
  const std::size_t length = std::strlen(name);
  return report_word(message, name + (length > most_characters ? length - most_characters : 0),
                     console);
}

int report_code(const Message& message, int code, int (*console)(int)) {
  return on_console() ? console(code) : show(message, std::to_string(code));
}

int report_plain(const Message& message, int (*console)()) {
  return on_console() ? console() : show(message, "");
}

int report_and_wait(const Message& message, int (*console)()) {
  if (on_console()) return console();
  return show_while(message, "", window_paper, [] { getch(); }) ? 0 : 1;
}

// A question that cannot be asked is answered so that nothing is lost.
int ask_to_overwrite() {
  if (on_console()) return console_reporters.copy_on_existing_file();
  int answer = 0;
  show_while(overwrite_question, "yes", question_paper, [&answer] {
    flush_key();
    const int key = getch();
    answer = key == 'n' || key == 'N' ? 0 : 1;
    if (answer != 0) return;
    shown_detail = "no ";
    refresh_one_wd_object(message_window_id);
    present();
  });
  return answer;
}

const ErrorReporters reporters = {
    .cannot_find_file =
        [](const char* name) {
          return report_name(missing_file, name, console_reporters.cannot_find_file);
        },
    .cannot_create_file =
        [](const char* name) {
          return report_name(unwritable_file, name, console_reporters.cannot_create_file);
        },
    .no_memory = [] { return report_plain(memory_short, console_reporters.no_memory); },
    .copy_on_existing_file = ask_to_overwrite,
    .illegal_pointer =
        [](int code) { return report_code(bad_pointer, code, console_reporters.illegal_pointer); },
    .file_error =
        [](int code) { return report_code(bad_file, code, console_reporters.file_error); },
    .use_bgeditor =
        [] { return report_and_wait(background_editor, console_reporters.use_bgeditor); },
    .use_aeeditor =
        [] { return report_and_wait(animation_editor, console_reporters.use_aeeditor); },
    .change_palette_info =
        [] { return report_plain(palette_changed, console_reporters.change_palette_info); },
    .no_cutbuffer = [] { return report_and_wait(nothing_cut, console_reporters.no_cutbuffer); },
    .unknown_parameter =
        [](const char* word) {
          return report_word(bad_parameter, word, console_reporters.unknown_parameter);
        },
};

}  // namespace

int too_few_samples(const char* name) {
  return report_name(samples_short, name, [](const char*) { return say("too_few_samples\n"); });
}

int no_match_near_start(const char* name) {
  return report_name(match_missing, name, [](const char*) { return say("no_match_near_start\n"); });
}

int not_a_signal(const char* name) {
  return report_name(no_signal, name, [](const char*) { return say("not_a_signal\n"); });
}

int spectrum_wanted_first() {
  return report_plain(spectrum_missing, [] { return say("spectrum_wanted_first\n"); });
}

bool message_is_shown() {
  return is_eligible(window()) && !is_icon(window());
}

void create_message_window() {
  constexpr int margins = 3;
  make_file_window(message_window_id, window_columns * cs, window_y, window_columns * cs,
                   margins * cs + 2 * cr, window_paper, frame_colour, text_ink, text_ink, file_name,
                   window_columns, -1);
  window().flags = message_window_flags;
}

const ErrorReporters& message_reporters() {
  return reporters;
}

void show_waiting_message() {
  if (waiting == nullptr || lifted_object() != 0) return;
  const Message* message = waiting;
  waiting = nullptr;
  show(*message, waiting_detail);
}

int remove_current_errormsg() {
  if (term == text_console) return 1;
  const WdObject& object = window();
  const bool is_served = lifted_object() == message_window_id;
  return is_off_screen(object) && !is_icon(object) && !is_served ? 1 : 0;
}

void draw_message_detail() {
  const Kept ink(fgcol);
  fgcol = text_ink;
  if (shown_text != nullptr) {
    clearwin(X1_min, Y1_min, X1_max, Y1_max, detail_paper);
    std::string text = shown_text;
    xkoord = X1_min;
    ykoord = Y1_min;
    show_one_line_of_text(text.data());
  }
  if (shown_detail.empty()) return;
  draw_cells(window().x + 2 * cs, window().y + 2 * cs + cr, shown_detail.c_str(), detail_paper);
}

void reset_messages() {
  shown_detail.clear();
  shown_text = nullptr;
  detail_paper = window_paper;
  waiting = nullptr;
  waiting_detail.clear();
}

}  // namespace torve
