#include "diagram/properties/property_menus.hpp"

#include <algorithm>
#include <array>

namespace torve {

namespace {

struct MenuOfKind {
  FigureKind kind;
  int (*fill)(Vobj* figure, int id, int x, int y);
};

constexpr std::array<MenuOfKind, 7> menus = {{
    {FigureKind::node, fill_nodemenu},
    {FigureKind::nodeb, fill_nodebmenu},
    {FigureKind::nodec, fill_nodebmenu},
    {FigureKind::vbox, fill_vboxmenu},
    {FigureKind::vline, fill_vlinemenu},
    {FigureKind::queue, fill_queuemenu},
    {FigureKind::tel, fill_telmenu},
}};

const MenuOfKind* menu_of(FigureKind kind) {
  const auto found = std::find_if(menus.begin(), menus.end(),
                                  [kind](const MenuOfKind& menu) { return menu.kind == kind; });
  return found != menus.end() ? found : nullptr;
}

}  // namespace

bool has_property_menu(const Vobj& figure) {
  return menu_of(figure.kind) != nullptr;
}

int fill_property_menu(Vobj* figure, int id, int x, int y) {
  if (figure == nullptr || !has_property_menu(*figure)) return 1;
  return menu_of(figure->kind)->fill(figure, id, x, y);
}

}  // namespace torve
