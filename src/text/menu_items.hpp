// The fields of a menu: small texts that the user edits in place.
#pragma once

#include "base/enum_flags.hpp"

namespace torve {

inline constexpr int field_length = 30;     // characters of a field at most
inline constexpr int field_room = 32;       // bytes of its storage, terminator included
inline constexpr int first_text_code = 17;  // codes below lead the choices of a selection field

enum class ItemFlags : unsigned {
  none = 0,
  use_maxlen = 1,  // maxlen is the editing length; otherwise it is field_length
  selection = 4,   // the text holds choices, each behind a character below first_text_code
};
template <>
inline constexpr bool is_flag_enum<ItemFlags> = true;

struct MenuItem {
  char text[field_room] = {};  // the value, always terminated
  int x = 0;                   // left edge from that of the text area, pixels, whole cells
  int y = 0;                   // top of the field's line from that of the first, pixels
  int maxlen = field_length;   // editing length in characters, if itemflags says so
  int width = field_length;    // of the field as shown and pressed, characters
  int nfields = 0;             // on the first field of a line: how many lie on that line
  ItemFlags itemflags = ItemFlags::none;
};

}  // namespace torve
