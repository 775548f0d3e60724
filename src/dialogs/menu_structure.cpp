#include "dialogs/menu_structure.hpp"

#include <algorithm>
#include <cstddef>
#include <new>

#include "display/screen_state.hpp"

namespace torve {

namespace {

// `count` elements with their start values; null when there is no memory.
template <typename T>
T* allocate(std::size_t count) {
  return new (std::nothrow) T[count]();
}

template <typename T>
void release(T** block) {
  delete[] * block;
  *block = nullptr;
}

// The pointers and, behind them, the characters that they lead to.
char** allocate_lines(int count, int line_size) {
  const auto pointers = static_cast<std::size_t>(count);
  const auto size = static_cast<std::size_t>(std::max(line_size, 0));
  char** lines = allocate<char*>(pointers + (pointers * size + sizeof(char*) - 1) / sizeof(char*));
  if (lines == nullptr || size == 0) return lines;
  char* characters = reinterpret_cast<char*>(lines + pointers);
  for (std::size_t i = 0; i < pointers; ++i)
    lines[i] = characters + i * size;
  return lines;
}

}  // namespace

int create_menustructure(MenuItem** items, char*** lines, int** flags, int nitems, int nlines,
                         int linesize) {
  if (nitems > 0) {
    *items = allocate<MenuItem>(static_cast<std::size_t>(nitems));
    if (*items == nullptr) return 1;
    for (int i = 0; i < nitems; ++i) {
      (*items)[i].x = X__max;
      (*items)[i].y = Y__max;
    }
  }
  if (nlines < 1) return 0;
  *lines = allocate_lines(nlines, linesize);
  *flags = allocate<int>(static_cast<std::size_t>(nlines));
  return *lines == nullptr || *flags == nullptr ? 1 : 0;
}

int free_menustructure(MenuItem** items, char*** lines, int** flags, int nitems, int nlines,
                       int linesize) {
  if (nitems > 0) {
    if (*items == nullptr) return 1;
    release(items);
  }
  if (nlines < 1) return 0;
  if (*flags == nullptr) return 1;
  release(flags);
  if (*lines == nullptr) return 1;
  if (linesize > 0 && std::find(*lines, *lines + nlines, nullptr) != *lines + nlines) return 1;
  release(lines);
  return 0;
}

}  // namespace torve
