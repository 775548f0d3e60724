// Any bytes are taken as the messages: they are shown and scrolled through in a text window and in
// the message window with a word of their own, and leave no trace.

#include <algorithm>

#include "base/errors.hpp"
#include "dialogs/file_window.hpp"
#include "stage.hpp"
#include "wm/stacking.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  static const MemoryFile file;
  static const Stage stage;
  static const bool linked = (Stage::link("messages.txt", file), true);
  static_cast<void>(linked);
  if (size < 4) return 0;
  file.fill({data + 4, size - 4});
  constexpr int id = 9;
  const auto& before = canvas();
  make_file_window(id, data[0] * 4, data[1] * 3, 60 + data[2], 40 + data[3], 15, 1, 1, 0,
                   "messages.txt", -1, -1);
  keep_on_canvas(wd(id), true);
  if (put_wd_objects(id, id) != 0) std::abort();
  for (const int column : {0, 3, 1000}) {
    wd(id).scroll_column = column;
    wd(id).scroll_line = column * 7;
    refresh_one_wd_object(id);
  }
  static_cast<void>(free_file_window(id));
  const std::string word(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 40));
  if (cannot_find_file(word.c_str()) != 0) std::abort();
  hide_errormsg();
  use_bgeditor();
  hide_errormsg();
  if (!canvas_is(before) || b_counter > 1) std::abort();
  return 0;
}
