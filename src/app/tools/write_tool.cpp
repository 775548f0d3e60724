#include <cstdio>
#include <string>

#include "app/signal/au_file.hpp"
#include "app/tools/batch_line.hpp"
#include "app/tools/sound_lines.hpp"
#include "app/tools/tools.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/strip.hpp"
#include "dialogs/tool_menu.hpp"
#include "sound/sound_names.hpp"

namespace torve {

namespace {

// The names belong to the last line and are the first fields; the first two lines use them.
enum Field { res_name, au_name, start_time, end_time, field_count };

void convert_to_sound(const MenuRun& menu) {
  std::string line;
  const Outcome outcome = make_sound_of(menu.text(res_name), menu.text(au_name), &line);
  if (outcome.cause != Cause::cancelled) std::printf("done\n");
  outcome.is_done() ? say_in_strip(line) : show_outcome(outcome);
}

void convert(const MenuRun& menu) {
  if (sound_kind(menu.text(au_name))) return convert_to_sound(menu);
  const Outcome outcome = convert_to_au(menu.text(res_name), menu.text(au_name));
  if (outcome.cause != Cause::cancelled) std::printf("done\n");
  show_outcome(outcome);
}

void cut(const MenuRun& menu) {
  std::printf("at write_au_menu_actions\n");
  for (int i = 0; i < field_count; ++i)
    std::printf("u1[%d].name=%s\n", i, menu.text(i));
  const Outcome outcome =
      cut_au(menu.text(au_name), menu.text(res_name), real_field(menu.field(start_time), 0),
             real_field(menu.field(end_time), 0));
  if (outcome.cause == Cause::cancelled) return show_outcome(outcome);
  std::printf("done\n");
  show_outcome(outcome);
  const std::string remark = au_remark(menu.text(au_name));
  if (!remark.empty()) say_in_strip(std::string(menu.text(au_name)) + ' ' + remark);
}

std::string convert_command(const MenuRun& menu) {
  const char* const command = sound_kind(menu.text(au_name)) ? "export" : "to-au";
  return batch_line({command, menu.text(res_name), menu.text(au_name)});
}

std::string cut_command(const MenuRun& menu) {
  return batch_line({"cut", menu.text(au_name), menu.text(res_name),
                     batch_number(real_field(menu.field(start_time), 0)),
                     batch_number(real_field(menu.field(end_time), 0))});
}

constexpr MenuLine lines[] = {
    {.text = "Convert RES to AU.", .run = convert, .command = convert_command},
    {.text = "Cut AU to RES. Start sek=       End sek=   ",
     .fields = {{
         {.number = start_time, .column = 25, .width = 5, .text = "1.9"},
         {.number = end_time, .column = 40, .width = 5, .text = "2.37", .beyond = 2},
     }},
     .run = cut,
     .command = cut_command},
    {.text = "RES=                 AU=                   ",
     .fields = {{
         {.number = res_name, .column = 4, .width = 10, .text = "checknew.res"},
         {.number = au_name, .column = 24, .width = 10, .text = "checkts.au"},
     }}},
};

constexpr ToolMenu menu = {
    .id = write_menu_id,
    .x_cells = 50,
    .y_lines = 4,
    .y_pixels = 485,
    .table = {.lines = lines,
              .action = write_au_menu_actions,
              .width_cells = 48,
              .spare_fields = 1},
};

}  // namespace

int fill_write_au_menu() {
  return fill_menu(menu);
}

int write_au_ope(int, int, int) {
  return open_tool(menu);
}

int write_au_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace torve
