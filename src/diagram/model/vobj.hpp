// The figures of a diagram and their list.
//
// A figure remembers the pixels it covers, so it can be taken off the canvas without redrawing
// anything underneath. The list's order is the drawing order: the last figure lies on top.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "diagram/model/figure_kinds.hpp"

namespace torve {

inline constexpr int vobj_name_size = 21;      // bytes of a name: 20 characters and the terminator
inline constexpr int label_text_length = 20;   // characters that a label shows
inline constexpr std::size_t most_bends = 20;  // of an arc
inline constexpr int highest_identity = 1'000'000'000;
inline constexpr double no_probability = -1;  // of an arc that has none of its own

/// Bits of a figure's phase.
inline constexpr int phase_on_canvas = 1;  // erase it before it changes
inline constexpr int phase_draw = 2;       // draw it after the change

/// The figure that a point goes along with, and where: each coordinate is counted from one of the
/// figure's two points, so that what stretches the figure takes along what is at the stretched end.
struct Hold {
  int figure = 0;          // its serial number, 0 for none
  int x_of = 1, y_of = 1;  // 1 or 2: the point whose x, or y, is counted from
  int dx = 0, dy = 0;      // from there, pixels
  bool operator==(const Hold&) const = default;
};

/// What a figure is, without what belongs to the canvas and the window objects.
struct FigureRecord {
  int serial = 0;    // names the figure for as long as the program runs; counts from 1
  int identity = 0;  // names it in files, for as long as it lives; counts from 1
  char name[vobj_name_size] = {};  // shown as its label; zeros behind its end
  char text[vobj_name_size] = {};  // what a label shows
  int x1 = -1, y1 = 0;             // anchor: of a node the top centre of its head box; pixels
  int x2 = -1, y2 = 0;             // second point: end of the lifeline, opposite corner, tip
  std::uint32_t colour = 0;        // pixel value
  int phase = 0;                   // 0: not placed yet
  FigureKind kind = FigureKind::node;
  int spare[4] = {};
  int servers = 0, exit_filter = 0, ps_mode = 0, selection_rule = 0;  // as the menus store them
  double value[4] = {};
  int integer[2] = {};
  Hold from, to;                        // of an arc's ends; a text goes along with `from`
  std::vector<FigureAnchor> bends;      // of an arc, from its first point on
  double probability = no_probability;  // of an arc: 0 .. 1
  char job_class[vobj_name_size] = {};  // of an arc: whose way it is; empty: everybody's
  std::vector<std::string>
      attributes;          // names of a node b's numbers where they are not "Attr1" ...
  std::string other_keys;  // of its line in the file that nobody here knows
  bool operator==(const FigureRecord&) const = default;
};

struct KeptFigure;

struct Vobj : FigureRecord {
  Vobj* next = nullptr;  // towards the top
  Vobj* prev = nullptr;
  std::vector<std::uint32_t> saved;        // the pixels it covers, a slot each
  int menu_id = 0;                         // of its property menu, 0 for none
  Vobj* label = nullptr;                   // its name label; link_label sets it
  Vobj* owner = nullptr;                   // of a label: the figure that carries it
  std::shared_ptr<const KeptFigure> kept;  // what it was when it was kept last
};

// State: the list and the figure that is being created, moved or edited.
extern Vobj* firstvobj;
extern Vobj* lastvobj;
extern Vobj* cvobj;
extern int vobjmode;  // what a press on the canvas does, 0 nothing

[[nodiscard]] FigurePlace place_of(const FigureRecord& figure);

/// Whether a placed figure shows by itself: an arc with bends does, a blank text does not.
[[nodiscard]] bool shows(const FigureRecord& figure);

/// Whether anything of a figure is to be seen: it is placed and shows, or its label does.
[[nodiscard]] bool is_seen(const Vobj& figure);

/// Writes a text of at most 20 characters; what is longer is cut.
void store_text(char (&to)[vobj_name_size], const char* text);

/// Whether there is nothing but blanks and tabs in it.
[[nodiscard]] bool is_blank(const char* text);

/// A serial number that no figure has had.
[[nodiscard]] int new_serial();

/// New figures get identities above this one. restart_identities() lets them count from 1 again:
/// the diagram is a new one.
void keep_identities_above(int identity);
void restart_identities();

/// The figure with this serial number, null when there is none.
[[nodiscard]] Vobj* figure_of(int serial);

/// The figure that carries this label, null when none does.
[[nodiscard]] Vobj* owner_of(const Vobj* label);

/// Makes a label (null: none) a figure's; the label that it had is nobody's then.
void link_label(Vobj* owner, Vobj* label);

/// A new figure at the end of the list, not placed. Null after no_memory().
Vobj* create_vector_obj(FigureKind kind);

/// The same with the serial number and the identity that it had once.
Vobj* create_vector_obj(FigureKind kind, int serial, int identity);

/// The list's own operations.
void link_last_vobj(Vobj* figure);
void unlink_vobj(Vobj* figure);

/// Takes a figure out of the list and releases it; it is not erased. It is no longer current, nor
/// anybody's label. Returns 0.
int remove_vobj(Vobj* figure);

}  // namespace torve
