#include "diagram/properties/property_menus.hpp"

#include <array>

namespace torve {

namespace {

using Fill = int (*)(Vobj* figure, int id, int x, int y);

// In the order of FigureMenu.
constexpr std::array<Fill, figure_menu_count> fills = {
    nullptr,        fill_nodemenu,  fill_nodebmenu, fill_vboxmenu,
    fill_vlinemenu, fill_queuemenu, fill_telmenu,   fill_arcmenu,
};

}  // namespace

bool has_property_menu(const Vobj& figure) {
  return row_of(figure.kind).menu != FigureMenu::none;
}

int fill_property_menu(Vobj* figure, int id, int x, int y) {
  if (figure == nullptr || !has_property_menu(*figure)) return 1;
  return fills[static_cast<std::size_t>(row_of(figure->kind).menu)](figure, id, x, y);
}

}  // namespace torve
