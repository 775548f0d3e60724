#include "diagram/properties/vocabulary.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "base/errors.hpp"
#include "display/input.hpp"
#include "text/menu_items.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr std::string_view blanks = " \t";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

bool begins_with_word(std::string_view text, std::string_view word) {
  return text.starts_with(word) &&
         (text.size() == word.size() || blanks.find(text[word.size()]) != std::string_view::npos);
}

// Null when the text, which is trimmed, begins with none of the words.
const VocabularyEntry* entry_at(Vocabulary table, std::string_view text) {
  const VocabularyEntry* found = nullptr;
  for (const VocabularyEntry& entry : table) {
    const std::string_view word = entry.word;
    if (!begins_with_word(text, word)) continue;
    if (found == nullptr || word.size() > std::string_view(found->word).size()) found = &entry;
  }
  return found;
}

void write_field(char* field, const std::string& text) {
  std::snprintf(field, field_length + 1, "%s", text.c_str());
}

}  // namespace

// An older message has been read by now; this one goes, so that a second one can be seen.
void report_unknown(std::string_view word) {
  hide_errormsg();
  if (unknown_parameter(std::string(word).c_str()) != 0) return;
  getch_or_press();
  hide_errormsg();
}

int cnvtbl_i_to_s(Vocabulary table, int code, char* field) {
  const auto entry = std::find_if(table.begin(), table.end(),
                                  [code](const VocabularyEntry& e) { return e.code == code; });
  if (entry == table.end()) return 1;
  write_field(field, entry->word);
  return 0;
}

int cnvtbl_l_to_s(Vocabulary table, std::int32_t code, char* field) {
  return cnvtbl_i_to_s(table, code, field);
}

int cnvtbl_s_to_i(Vocabulary table, const char* field, int* code) {
  if (cnvtbl_s_to_i_noerror(table, field, code) == 0) return 0;
  report_unknown(trimmed(field));
  return 1;
}

int cnvtbl_s_to_l(Vocabulary table, const char* field, std::int32_t* code) {
  return cnvtbl_s_to_i(table, field, code);
}

int cnvtbl_s_to_i_noerror(Vocabulary table, const char* field, int* code) {
  const VocabularyEntry* entry = entry_at(table, trimmed(field));
  if (entry == nullptr) return 1;
  *code = entry->code;
  return 0;
}

int cnvtbl_s_to_l_noerror(Vocabulary table, const char* field, std::int32_t* code) {
  return cnvtbl_s_to_i_noerror(table, field, code);
}

int cnvtbl_set(Vocabulary table, int n, char* field, int* code) {
  if (n < 0 || static_cast<std::size_t>(n) >= table.size()) return 1;
  const VocabularyEntry& entry = table[static_cast<std::size_t>(n)];
  write_field(field, entry.word);
  *code = entry.code;
  return 0;
}

int cnvtbl_setl(Vocabulary table, int n, char* field, std::int32_t* code) {
  return cnvtbl_set(table, n, field, code);
}

int circulate(Vocabulary table, char* field) {
  const std::string_view text = trimmed(field);
  const VocabularyEntry* entry = entry_at(table, text);
  if (entry == nullptr) return 1;
  const bool is_last = entry == &table.back();
  const char* next = is_last ? table.front().word : entry[1].word;
  write_field(field, next + std::string(text.substr(std::string_view(entry->word).size())));
  return 0;
}

const char* text_behind_word(Vocabulary table, const char* field) {
  const std::string_view text = trimmed(field);
  const VocabularyEntry* entry = entry_at(table, text);
  return entry == nullptr ? field : text.data() + std::string_view(entry->word).size();
}

}  // namespace torve
