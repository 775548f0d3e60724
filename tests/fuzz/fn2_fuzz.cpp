// Any bytes are taken as a picture: nothing beside it changes on the screen, and a buffer of the
// caller's is filled as far as it goes. The first bytes choose the place and the buffer.

#include <cstring>

#include "picture/fn2.hpp"
#include "stage.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  static const Stage stage;
  static const MemoryFile file;
  if (size < 4) return 0;
  file.fill({data + 4, size - 4});
  const int x = data[0] * 4 - 100;
  const int y = data[1] * 3 - 50;
  const std::vector<std::uint8_t>& before = canvas();
  int width = 0;
  int height = 0;
  static_cast<void>(getpicture(file.name(), x, y, &width, &height));
  hide_errormsg();
  if (gplanes != screen_planes) std::abort();
  const Rect area = intersection({x, y, x + width, y + height}, whole_screen);
  for (std::size_t line = 0; line < std::size_t{screen_planes} * screen_height; ++line) {
    const int row = static_cast<int>(line % screen_height);
    const bool meets = !area.empty() && row >= area.y1 && row < area.y2;
    // Of the rows that meet the picture, the bytes that hold no pixel of it.
    const auto same = [&](int first, int last) {
      const std::size_t start = line * plane_line_bytes + static_cast<std::size_t>(first);
      return std::memcmp(before.data() + start, screen_block() + start,
                         static_cast<std::size_t>(last - first)) == 0;
    };
    const int left = meets ? area.x1 / 8 : plane_line_bytes;
    const int right = meets ? (area.x2 + 7) / 8 : plane_line_bytes;
    if (!same(0, left) || !same(right, plane_line_bytes)) std::abort();
  }
  int stride = data[3];
  std::vector<std::uint8_t> buffer(std::size_t{data[2]} * data[3]);
  width = height = data[2];
  static_cast<void>(loadbuf_fromfile(file.name(), &width, &height, &stride, buffer));
  hide_errormsg();
  gplanes = screen_planes;
  return 0;
}
