// The words that menus show in place of codes.
//
// A field may hold more behind a word, after a blank: the word is the longest one of
// the table that is followed by a blank or the end. Blanks before it do not count.
//
// All functions return 0, or 1 when there is no such word or code; what they were to write stays as
// it was then. Fields have room for a menu's (field_room bytes).
#pragma once

#include <cstdint>
#include <string_view>

#include "diagram/model/vocabularies.hpp"

namespace torve {

/// Writes a code's word into a field.
int cnvtbl_i_to_s(Vocabulary table, int code, char* field);

/// Shows a word with unknown_parameter() until a key or a mouse button is pressed.
void report_unknown(std::string_view word);

/// Finds the code of a field's word. The first one does report_unknown() when it is none.
int cnvtbl_s_to_i(Vocabulary table, const char* field, int* code);
int cnvtbl_s_to_i_noerror(Vocabulary table, const char* field, int* code);

/// Writes the word of entry `n`, from 0, into a field, and its code.
int cnvtbl_set(Vocabulary table, int n, char* field, int* code);

/// Puts the next word in place of a field's, the first one after the last. What stands behind the
/// word stays, as far as there is room, but for blanks at its end.
int circulate(Vocabulary table, char* field);

/// What a field holds behind its word; the whole field when there is no word of the table.
[[nodiscard]] const char* text_behind_word(Vocabulary table, const char* field);

// Not used by the workbench itself.

/// The functions above with names of their own for 32-bit codes.
int cnvtbl_l_to_s(Vocabulary table, std::int32_t code, char* field);
int cnvtbl_s_to_l(Vocabulary table, const char* field, std::int32_t* code);
int cnvtbl_s_to_l_noerror(Vocabulary table, const char* field, std::int32_t* code);
int cnvtbl_setl(Vocabulary table, int n, char* field, std::int32_t* code);

}  // namespace torve
