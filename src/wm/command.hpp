// What a window object that has been served asks the engine to do with it.
#pragma once

#include <cstdint>

#include "display/input.hpp"

namespace torve {

enum class Command : std::int8_t {
  hide = -5,  // take it off the canvas and keep it
  move = -4,  // the kind has set cxoff and cyoff
  make_icon = -3,
  put_down = -2,  // the press goes on to what lies beneath it
  free = -1,
  run_action = 0,  // put it down, then call its action
  missing_file,    // put it down, report its name
  no_memory,       // put it down, report it
  put_down_only,   // any value without a meaning of its own
};

/// The answer of a kind's serve.
struct Served {
  Command command = Command::put_down_only;
  PointerEvent last;  // the event that ended the serve: a serve waits for events of its own
};

}  // namespace torve
