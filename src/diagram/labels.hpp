// The names that stand beside figures.
//
// A label is a figure of its own that shows a text; its owner, if it has one, takes it along when
// it moves. A label that was moved by hand keeps its new distance.
#pragma once

#include "diagram/model/vobj.hpp"
#include "draw/draw_vector.hpp"

namespace torve {

/// Closes the property menu of cvobj and gives it a new label at (x, y), pixels, in place of the
/// old one. The text (at most 20 characters of it) may lie in that menu. A blank text makes no
/// label.
void put_vlabel(VectorMode mode, int x, int y, const char* text);

/// Sets a label's text and its second point, which follow from each other.
void set_label_text(Vobj* label, const char* text);

/// Frees the property menu of a figure, if it has one.
void close_property_menu(Vobj* figure);

/// The object id of a figure's property menu, 0 when it has none: an id that is kept counts only
/// while that object is this figure's menu.
[[nodiscard]] int property_menu_of(const Vobj& figure);

/// The figure whose property menu an object is, null for any other object.
[[nodiscard]] Vobj* figure_of_menu(int id);

}  // namespace torve
