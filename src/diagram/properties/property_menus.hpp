// The property menus: what each kind of figure can be told about the model it stands for.
#pragma once

#include "diagram/model/vobj.hpp"
#include "text/menu_items.hpp"

namespace torve {

/// Whether figures of this kind have a property menu.
[[nodiscard]] bool has_property_menu(const Vobj& figure);

/// Fills object `id` with the property menu of a figure, its upper left corner at (x, y), pixels,
/// or as near as the canvas allows; nothing is drawn. Returns 0; 1 when its kind has no such menu,
/// without a figure or for an id outside 1 .. 128; -1 after "failed to allocate menu".
int fill_property_menu(Vobj* figure, int id, int x, int y);

/// The same for one kind: node, box, line, nodeb and nodec, queue, telephone,
/// arc.
int fill_nodemenu(Vobj* figure, int id, int x, int y);
int fill_vboxmenu(Vobj* figure, int id, int x, int y);
int fill_vlinemenu(Vobj* figure, int id, int x, int y);
/// The names of its attributes come from "nodeattrs.dat", a line each. Without the file, after
/// cannot_find_file(), they are "Attr1" and so on.
int fill_nodebmenu(Vobj* figure, int id, int x, int y);
/// Shows three lines only, the others by scrolling, when the figure's second spare word is set.
int fill_queuemenu(Vobj* figure, int id, int x, int y);
int fill_telmenu(Vobj* figure, int id, int x, int y);
int fill_arcmenu(Vobj* figure, int id, int x, int y);

/// What running them does; see property_menu.hpp. Return 0.
int node_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int vbox_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int vline_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int nodeb_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int queue_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int tel_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int arc_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);

}  // namespace torve
