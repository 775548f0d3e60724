#include <cstdio>
#include <optional>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/spectrum.hpp"
#include "app/tools/batch_line.hpp"
#include "app/tools/pane_views.hpp"
#include "app/tools/tools.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/tool_menu.hpp"

namespace torve {

namespace {

enum Field {
  rest_file,  // of the out-of-band line
  rest_low,
  rest_high,
  input,  // of the spectrum
  pane_number,
  samples,
  band_file,  // of the band pass
  band_low,
  band_high,
};

void out_of_band(const MenuRun& menu) {
  show_outcome(filter_stored_spectrum(menu.text(rest_file), string_to_int(menu.text(rest_low)),
                                      string_to_int(menu.text(rest_high)), filter_out_of_band));
}

void band_pass(const MenuRun& menu) {
  const int low = string_to_int(menu.text(band_low));
  const int high = string_to_int(menu.text(band_high));
  std::printf("going to filter_spectrum low=%d high=%d\n", low, high);
  show_outcome(filter_stored_spectrum(menu.text(band_file), low, high, filter_band_pass));
}

void spectrum_into_pane(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(pane_number));
  if (!pane) return;
  const std::string name = "spectr" + std::to_string(*pane + 1) + ".spe";
  const Outcome transformed = transform_file(menu.text(input), name, menu.text(samples));
  // Too few samples leave an empty spectrum, which is shown; without any new one nothing is.
  if (transformed.is_done() || transformed.cause == Cause::too_few_samples) {
    set_pane_name(*pane, name);
    const Outcome shown = show_spectrum(*pane, {.xsc = spectrum_xsc}, menu.text(samples));
    if (transformed.is_done()) show_outcome(shown);
  }
  show_outcome(transformed);
}

std::string spectrum_command(const MenuRun& menu) {
  return batch_line({"spectrum", menu.text(input),
                     "spectr" + std::string(menu.text(pane_number)) + ".spe", menu.text(samples)});
}

// A filter works on the spectrum that was computed last.
std::string filter_command(const char* command, const char* output, const char* low,
                           const char* high) {
  const Transformed& last = last_transformed();
  if (last.input.empty()) return {};
  return batch_line({command, last.input, last.output, output, std::to_string(string_to_int(low)),
                     std::to_string(string_to_int(high)), last.samples});
}

std::string rest_command(const MenuRun& menu) {
  return filter_command("out-of-band", menu.text(rest_file), menu.text(rest_low),
                        menu.text(rest_high));
}

std::string band_command(const MenuRun& menu) {
  return filter_command("band-pass", menu.text(band_file), menu.text(band_low),
                        menu.text(band_high));
}

constexpr MenuLine lines[] = {
    {.text = "Out-of-band to             low=      Hz high=     Hz",
     .fields = {{
         {.number = rest_file, .column = 15, .width = 12, .text = "rest.res"},
         {.number = rest_low, .column = 31, .width = 5, .text = "2200"},
         {.number = rest_high, .column = 45, .width = 5, .text = "5000"},
     }},
     .run = out_of_band,
     .command = rest_command},
    {.text = "Powerspectrum of              to Plot  samples=",
     .fields = {{
         {.number = input, .column = 17, .width = 10, .text_now = pane_file<3>},
         {.number = pane_number, .column = 37, .width = 2, .text = "3"},
         {.number = samples, .column = 47, .width = 6, .text = "all", .beyond = 6},
     }},
     .run = spectrum_into_pane,
     .command = spectrum_command},
    {.text = "Bandpass to                low=      Hz high=     Hz",
     .fields = {{
         {.number = band_file, .column = 12, .width = 9, .text = "mid.res"},
         {.number = band_low, .column = 31, .width = 5, .text = "2200"},
         {.number = band_high, .column = 45, .width = 5, .text = "5000"},
     }},
     .run = band_pass,
     .command = band_command},
};

constexpr ToolMenu menu = {
    .id = spectrum_menu_id,
    .x_cells = 40,
    .table = {.lines = lines, .action = analysis2_menu_actions, .width_cells = 57},
};

}  // namespace

int fill_analysis2_menu() {
  return fill_menu(menu);
}

int analysis2_ope(int, int, int) {
  return open_tool(menu);
}

int analysis2_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace torve
