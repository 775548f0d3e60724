// Which window object is whose.
//
// Ids are chosen by whoever makes an object; there is no allocator. This is the table of all of
// them: two owners of one id stand here side by side or not at all.
#pragma once

#include <span>

namespace torve {

inline constexpr int wd_object_count = 128;  // ids 1 .. 128

inline constexpr int message_window_id = 1;
inline constexpr int palette_id = 2;
inline constexpr int figure_menu_blocker_id = 3;  // while it is in use no figure menu opens
inline constexpr int diagram_files_id = 4;
inline constexpr int help_window_id = 5;
inline constexpr int write_menu_id = 11;
inline constexpr int plot_menu_id = 12;
inline constexpr int print_menu_id = 13;
inline constexpr int read_menu_id = 14;
inline constexpr int figure_menu_id = read_menu_id;  // whoever comes second does not open
inline constexpr int analysis_menu_id = 15;
inline constexpr int spectrum_menu_id = 16;
inline constexpr int first_property_menu_id = 17;  // those of figures: the first that is free
inline constexpr int last_property_menu_id = 127;

struct ObjectIds {
  const char* owner;
  int first, last;
  bool shared = false;  // with the owner before it
};
inline constexpr ObjectIds object_ids[] = {
    {"errors", message_window_id, message_window_id},
    {"the diagram's palette", palette_id, palette_id},
    {"nobody of the workbench", figure_menu_blocker_id, figure_menu_blocker_id},
    {"the diagram's files", diagram_files_id, diagram_files_id},
    {"help", help_window_id, help_window_id},
    {"the write tool", write_menu_id, write_menu_id},
    {"the plot settings", plot_menu_id, plot_menu_id},
    {"the print tool", print_menu_id, print_menu_id},
    {"the read tool", read_menu_id, read_menu_id},
    {"Cut, Copy and Color of a figure", figure_menu_id, figure_menu_id, true},
    {"the correlations", analysis_menu_id, analysis_menu_id},
    {"the spectrum", spectrum_menu_id, spectrum_menu_id},
    {"properties of figures", first_property_menu_id, last_property_menu_id},
};

/// Whether ids ascend and each is one owner's, but for those that say they are shared.
[[nodiscard]] constexpr bool ids_are_told_apart(std::span<const ObjectIds> table) {
  for (std::size_t i = 0; i < table.size(); ++i) {
    const ObjectIds& ids = table[i];
    if (ids.first < 1 || ids.last > wd_object_count || ids.first > ids.last) return false;
    if (i == 0) continue;
    const ObjectIds& before = table[i - 1];
    const bool same = ids.first == before.first && ids.last == before.last;
    if (ids.shared ? !same : ids.first <= before.last) return false;
  }
  return true;
}
static_assert(ids_are_told_apart(object_ids));

}  // namespace torve
