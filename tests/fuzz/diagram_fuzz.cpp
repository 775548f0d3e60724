// Any text is taken as a diagram. One that is read is drawn, written again as the same figures, and
// taken off the canvas without a trace.

#include "diagram/drawing.hpp"
#include "diagram/model/diagram_text.hpp"
#include "diagram/restore.hpp"
#include "stage.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  static const Stage stage;
  int bad_line = 0;
  const auto diagram = diagram_from_text({reinterpret_cast<const char*>(data), size}, &bad_line);
  if (!diagram) return bad_line > 0 ? 0 : (std::abort(), 0);
  const std::string text = diagram_to_text(*diagram);
  const auto again = diagram_from_text(text, &bad_line);
  if (!again || diagram_to_text(*again) != text) std::abort();
  static const auto& empty = canvas();
  restore_diagram(*diagram);
  free_vector_objects(VectorMode::clipped);
  if (!canvas_is(empty)) std::abort();
  return 0;
}
