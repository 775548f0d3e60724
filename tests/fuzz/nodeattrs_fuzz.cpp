// Any bytes are taken as the names of the attributes: the menu that shows them comes and goes
// without a trace.

#include "diagram/drawing.hpp"
#include "diagram/properties/property_menus.hpp"
#include "stage.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace torve;
  static const MemoryFile names;
  static const Stage stage;
  static const bool linked = (Stage::link("nodeattrs.dat", names), true);
  static_cast<void>(linked);
  names.fill({data, size});
  constexpr int id = 20;
  const auto& before = canvas();
  Vobj* figure = create_vector_obj(FigureKind::nodeb);
  if (fill_property_menu(figure, id, 500, 400) != 0 || put_wd_objects(id, id) != 0) std::abort();
  free_one_wd_object(id);
  free_vector_objects(VectorMode::clipped);
  if (!canvas_is(before)) std::abort();
  return 0;
}
