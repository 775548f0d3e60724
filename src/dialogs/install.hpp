// Making the dialogs known to the rooms below.
#pragma once

namespace torve {

/// Registers menus, text windows, input windows and labels as kinds of window objects, and the
/// message window as the way errors are shown. To be called once, before init_engine.
void install_dialogs();

}  // namespace torve
