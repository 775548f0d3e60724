#include "app/signal/say.hpp"

#include <cstdarg>
#include <cstdio>

#include "base/console.hpp"

namespace torve {

void say(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
  serve_screen();
}

}  // namespace torve
