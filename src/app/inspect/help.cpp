#include "app/inspect/help.hpp"

#include "dialogs/file_window.hpp"
#include "wm/object_ids.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr const char* help_file = "keys.txt";
constexpr int white = 15, frame_blue = 1, black = 0;

}  // namespace

void open_help() {
  if (wd(help_window_id).kind != kind_free) {
    bring_id_to_top(help_window_id, 1);
    return;
  }
  make_file_window(help_window_id, 160, 60, 480, 430, white, frame_blue, black, black, help_file,
                   -1, -1);
  static_cast<void>(put_wd_objects(help_window_id, help_window_id));
}

}  // namespace torve
