// What undo goes back to, and whether the diagram is saved.
//
// The diagram is kept as it was before each change, as far back as there is room for; figures that
// a change leaves alone are kept once. A change may turn out to be none (a figure is grabbed and
// let go, a press draws nothing), so the diagram is kept when one may come, and compared when the
// next one may.
#pragma once

namespace torve {

/// Keeps the diagram as it is, in case a change follows. The change before, if there was one, has
/// come to its end.
void prepare_change();

/// Something has changed: undo goes back to what was prepared last. More changes may follow it.
void note_change();

/// Before a figure in hand is put in its place. That is a change of its own, but for a copy that
/// has just been made, let_change_go_on(): making it and placing it is one.
void prepare_placing();
void let_change_go_on();

/// Goes back to before the last change, and forth again to after it; nothing when there is none.
/// Figures that were not changed stay as they are. A new change leaves nothing to go forth to.
/// Return 0.
int undo_ope();
int redo_ope();

/// Whether the diagram is another one than when it was saved or read.
[[nodiscard]] bool diagram_is_unsaved();
void diagram_was_saved();

/// Says so behind the window's title. The main loop calls it after each event.
void show_unsaved_mark();

/// No change to go back to, nothing unsaved.
void reset_history();

}  // namespace torve
