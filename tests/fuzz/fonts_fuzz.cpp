// Any bytes are taken as a font with advances (as many as the first two bytes say); text is set in
// it at a place that the next two choose.

#include <algorithm>

#include "stage.hpp"
#include "text/text_output.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  static const MemoryFile glyphs;
  static const MemoryFile advances;
  static const Stage stage;
  static const bool linked =
      (Stage::link("font6.dat", glyphs), Stage::link("font6.dis", advances), true);
  static_cast<void>(linked);
  if (size < 4) return 0;
  const std::span bytes(data + 4, size - 4);
  const std::size_t cut = std::min<std::size_t>(data[0] + std::size_t{256} * data[1], bytes.size());
  advances.fill(bytes.first(cut));
  glyphs.fill(bytes.subspan(cut));
  std::string text;
  for (int code = 1; code < 256; ++code)
    text += static_cast<char>(code);
  if (init_font2(label_font) == 0 && fntlen2(text.c_str()) < -256 * 128) std::abort();
  if (init_font(label_font) != 0) return 0;
  xkoord = data[2] * 4 - 100;
  ykoord = data[3] * 3 - 50;
  textf(text.c_str(), 0, 15, label_font);
  otext(text.c_str(), 0, 15);
  int y = ykoord;
  textXY(xkoord, &y, text.c_str(), 0, 15);
  return 0;
}
