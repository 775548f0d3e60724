#include <cstdio>
#include <optional>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/spectrum.hpp"
#include "app/tools/panes.hpp"
#include "app/tools/tool_menu.hpp"
#include "app/tools/tools.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Out-of-band to             low=      Hz high=     Hz",
    "Powerspectrum of              to Plot  samples=",
    "Bandpass to                low=      Hz high=     Hz",
};
enum Line { out_of_band_line, spectrum_line, band_pass_line };

constexpr MenuField fields[] = {
    {.line = out_of_band_line, .column = 15, .width = 12, .text = "rest.res"},
    {.line = out_of_band_line, .column = 31, .width = 5, .text = "2200"},
    {.line = out_of_band_line, .column = 45, .width = 5, .text = "5000"},
    {.line = spectrum_line, .column = 17, .width = 10, .text_now = pane_file<3>},
    {.line = spectrum_line, .column = 37, .width = 2, .text = "3"},
    {.line = spectrum_line, .column = 47, .width = 6, .text = "all"},
    {.line = band_pass_line, .column = 12, .width = 9, .text = "mid.res"},
    {.line = band_pass_line, .column = 31, .width = 5, .text = "2200"},
    {.line = band_pass_line, .column = 45, .width = 5, .text = "5000"},
};
enum Field {
  rest_field,
  rest_low_field,
  rest_high_field,
  input_field,
  pane_field,
  samples_field,
  band_field,
  band_low_field,
  band_high_field
};

constexpr ToolMenu menu = {
    .id = spectrum_menu_id,
    .x_cells = 40,
    .table = {.lines = lines,
              .fields = fields,
              .action = analysis2_menu_actions,
              .width_cells = 57},
};

void filter(const MenuItem* items, int low, int high, FilterMode mode) {
  static_cast<void>(
      filter_spectrum(items[band_field].text, items[rest_field].text, low, high, mode));
}

void spectrum_into_pane(const MenuItem* items) {
  const std::optional<int> pane = pane_of(items[pane_field].text);
  if (!pane) return;
  const std::string name = "spectr" + std::to_string(*pane + 1) + ".spe";
  set_pane_name(*pane, name);
  static_cast<void>(power_spectrum(items[input_field].text, name, items[samples_field].text));
  show_spectrum(*pane, {.xsc = spectrum_xsc}, items[samples_field].text);
}

}  // namespace

int fill_analysis2_menu() {
  return fill_menu(menu);
}

int analysis2_ope(int, int, int) {
  return open_tool(menu.id, fill_analysis2_menu);
}

int analysis2_menu_actions(int, int* line_flags, MenuItem* items, char**) {
  switch (chosen_line(line_flags, menu.table)) {
    case out_of_band_line:
      filter(items, string_to_int(items[rest_low_field].text),
             string_to_int(items[rest_high_field].text), filter_out_of_band);
      break;
    case spectrum_line:
      spectrum_into_pane(items);
      break;
    case band_pass_line: {
      const int low = string_to_int(items[band_low_field].text);
      const int high = string_to_int(items[band_high_field].text);
      std::printf("going to filter_spectrum low=%d high=%d\n", low, high);
      filter(items, low, high, filter_band_pass);
      break;
    }
    default:
      break;
  }
  return 0;
}

}  // namespace torve
