// The figures of a diagram and their list.
//
// A figure remembers the pixels it covers, so it can be taken off the canvas without redrawing
// anything underneath. The list's order is the drawing order: the last figure lies on top.
#pragma once

#include <cstdint>
#include <vector>

#include "diagram/model/figure_kinds.hpp"

namespace torve {

inline constexpr int vobj_name_size = 21;     // bytes of a name: 20 characters and the terminator
inline constexpr int label_text_length = 20;  // characters that a label shows

/// Bits of a figure's phase.
inline constexpr int phase_on_canvas = 1;  // erase it before it changes
inline constexpr int phase_draw = 2;       // draw it after the change

struct Vobj {
  int serial = 0;        // names the figure for as long as the program runs; counts from 1
  Vobj* next = nullptr;  // towards the top
  Vobj* prev = nullptr;
  std::vector<std::uint32_t> saved;  // the pixels it covers, a slot each
  char name[vobj_name_size] = {};    // shown as its label
  char text[vobj_name_size] = {};    // what a label shows
  int x1 = -1, y1 = 0;               // anchor: of a node the top centre of its head box; pixels
  int x2 = -1, y2 = 0;               // second point: end of the lifeline, opposite corner, tip
  std::uint32_t colour = 0;          // pixel value
  int phase = 0;                     // 0: not placed yet
  FigureKind kind = FigureKind::node;
  int spare[4] = {};
  int servers = 0, exit_filter = 0, ps_mode = 0, selection_rule = 0;  // as the menus store them
  double value[4] = {};
  int integer[2] = {};
  int menu_id = 0;        // of its property menu, 0 for none
  Vobj* label = nullptr;  // its name label
};

// State: the list and the figure that is being created, moved or edited.
extern Vobj* firstvobj;
extern Vobj* lastvobj;
extern Vobj* cvobj;
extern int vobjmode;  // what a press on the canvas does, 0 nothing

[[nodiscard]] FigurePlace place_of(const Vobj& figure);

/// Whether anything of a figure is to be seen: it is placed and shows, or its label does.
[[nodiscard]] bool is_seen(const Vobj& figure);

/// A serial number that no figure has had.
[[nodiscard]] int new_serial();

/// The figure with this serial number, null when there is none.
[[nodiscard]] Vobj* figure_of(int serial);

/// The figure that carries this label, null when none does.
[[nodiscard]] Vobj* owner_of(const Vobj* label);

/// A new figure at the end of the list, not placed. Null after no_memory().
Vobj* create_vector_obj(FigureKind kind);

/// The list's own operations.
void link_last_vobj(Vobj* figure);
void unlink_vobj(Vobj* figure);

/// Takes a figure out of the list and releases it; it is not erased. It is no longer current, nor
/// anybody's label. Returns 0.
int remove_vobj(Vobj* figure);

}  // namespace torve
