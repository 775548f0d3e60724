// The menu of a picked figure: Cut, Copy, Color.
#pragma once

#include "diagram/model/vobj.hpp"
#include "text/menu_items.hpp"

namespace torve {

/// Fills object `id` with the menu of a figure, its upper left corner at (x, y), pixels, or as near
/// as the canvas allows; nothing is drawn. Results as for make_menu; 1 without a figure, too.
int fill_mscmenu(Vobj* figure, int id, int x, int y);

/// Shows the menu for a figure with its upper left corner at (x, y), pixels, moved inside the
/// canvas; nothing while object 3 or another menu at its own object id is in use. A menu that is
/// open for another figure is closed.
void open_figure_menu(Vobj* figure, int x, int y);

/// Closes it, if it is open.
void close_figure_menu();

/// The figure in hand goes, with its label; nothing when there is none.
void cut_current_figure();

/// A second figure like the one in hand, with its properties and its name, a little beside it and
/// in the hand instead of it; nothing when there is none.
void double_current_figure();

/// What its lines do. Returns 0.
int msc_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);

}  // namespace torve
