// What all property menus have in common: a table and two things that a press may ask for.
//
// A double press on a line whose field shows a word goes on to the next word. Anything else that
// runs the menu stores its fields in the figure, writes the figure's label anew and closes the
// menu. A menu finds its figure by itself, so that several may be open, whatever figure is current.
#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "diagram/properties/property_fields.hpp"

namespace torve {

struct PropertyMenu {
  PropertyLines lines;
  WdAction action = nullptr;
  int width_cells = 30;
  WdFlags flags = WdFlags::none;  // beside those of all property menus
};

/// Makes object `id` the menu of a figure, at (x, y), pixels, or as near as the canvas allows.
/// It is wider than its table says when a number could not be seen whole, or a word not be told
/// from another one. `visible_lines` 0: all. `texts`, if there are any, stand in place of the
/// lines' own. Results as for make_menu; 1 for no figure, too.
int fill(const PropertyMenu& menu, Vobj* figure, int id, int x, int y, int visible_lines = 0,
         std::span<const char* const> texts = {});

/// What the open property menus show of their figures. follow() writes anew what of it has changed
/// meanwhile; what was typed and not applied stays.
class ShownProperties {
 public:
  ShownProperties();
  void follow() const;

 private:
  std::map<int, std::vector<std::string>> texts_;  // by object id
};

/// The menu of object index + 1 was run. Returns 0.
int run_property_menu(const PropertyMenu& menu, int index, int* line_flags, MenuItem* items);

}  // namespace torve
