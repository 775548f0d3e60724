// What undo goes back to, and whether the diagram is saved.
//
// One step is kept: the diagram as it was before the last change. A change may turn out to be none
// (a figure is grabbed and let go), so it is prepared first and noted when it comes.
#pragma once

namespace torve {

/// Keeps the diagram as it is, in case a change follows.
void prepare_change();

/// The change has come: undo goes back to what was prepared last (once; more changes may follow
/// it), and the diagram is not saved any more.
void note_change();

/// Before a figure in hand is put in its place. That is a change of its own, but for a copy that
/// has just been made, let_change_go_on(): making it and placing it is one.
void prepare_placing();
void let_change_go_on();

/// Goes back to before the last change; nothing when there is none. Figures that were not changed
/// stay as they are. Returns 0.
int undo_ope();

/// Whether there are changes since the diagram was saved or read.
[[nodiscard]] bool diagram_is_unsaved();
void diagram_was_saved();

/// No change to go back to, nothing unsaved.
void reset_history();

}  // namespace torve
