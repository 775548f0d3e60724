// The six tools of the icon bar, and their actions.
//
// An opener shows its tool's menu; it returns 1 when that is open already and -1 when it cannot be
// had. An action runs the chosen line and returns 0.
#pragma once

#include "text/menu_items.hpp"

namespace torve {

int audio_ope(int buttons, int x, int y);      // plot settings and matching
int printeps_ope(int buttons, int x, int y);   // a pane as EPS
int read_au_ope(int buttons, int x, int y);    // files into panes, report, a pane as GIF
int write_au_ope(int buttons, int x, int y);   // AU conversions
int analysis_ope(int buttons, int x, int y);   // correlations
int analysis2_ope(int buttons, int x, int y);  // spectrum and filters

int audio_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int printeps_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int read_au_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int write_au_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int analysis_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int analysis2_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);

}  // namespace torve
