// Any text is taken as a diagram. One that is read is drawn, written again as the same figures, and
// taken off the canvas without a trace.

#include <vector>

#include "diagram/diagram_text.hpp"
#include "diagram/drawing.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "memory_file.hpp"
#include "text/fonts.hpp"

namespace {

using namespace torve;

bool start() {
  silence();
  if (!create_screen_image() || init_font2(label_font) != 0) std::abort();
  allocate_colours(allocate_true_colour);
  reset_screen_state();
  xxmax = 680;
  yymax = 599;
  return true;
}

std::vector<std::uint32_t> canvas() {
  std::vector<std::uint32_t> pixels(std::size_t{screen_width} * screen_height);
  read_pixels(whole_screen, pixels.data(), screen_width);
  return pixels;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool started = start();
  static_cast<void>(started);
  int bad_line = 0;
  const auto diagram = diagram_from_text({reinterpret_cast<const char*>(data), size}, &bad_line);
  if (!diagram) return bad_line > 0 ? 0 : (std::abort(), 0);
  const std::string text = diagram_to_text(*diagram);
  const auto again = diagram_from_text(text, &bad_line);
  if (!again || diagram_to_text(*again) != text) std::abort();
  static const std::vector<std::uint32_t> empty = canvas();
  restore_diagram(*diagram);
  free_vector_objects(VectorMode::clipped);
  if (canvas() != empty) std::abort();
  return 0;
}
