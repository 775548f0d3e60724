// The six tools of the icon bar, and their actions.
//
// An opener shows its tool's menu, which its builder makes; it returns 1 when that is open already
// and -1 when it cannot be had, as the builder does. An action runs the chosen line and returns 0.
#pragma once

#include "text/menu_items.hpp"

namespace torve {

int audio_ope(int buttons, int x, int y);      // plot settings and matching
int printeps_ope(int buttons, int x, int y);   // a pane as EPS
int read_au_ope(int buttons, int x, int y);    // files into panes, report, a pane as GIF
int write_au_ope(int buttons, int x, int y);   // AU conversions
int analysis_ope(int buttons, int x, int y);   // correlations
int analysis2_ope(int buttons, int x, int y);  // spectrum and filters

int fill_audiomenu();
int fill_printeps_menu();
int fill_read_au_menu();
int fill_write_au_menu();
int fill_analysis_menu();
int fill_analysis2_menu();

int audio_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int printeps_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int read_au_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int write_au_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int analysis_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);
int analysis2_menu_actions(int index, int* line_flags, MenuItem* items, char** lines);

}  // namespace torve
