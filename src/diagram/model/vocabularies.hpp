// The words that stand for codes, in menus and in what is written for other programs.
//
// A vocabulary is a table of words and their codes; its order is the order in which a menu's field
// goes through them.
#pragma once

#include <span>

namespace torve {

struct VocabularyEntry {
  const char* word;
  int code;
};
using Vocabulary = std::span<const VocabularyEntry>;

inline constexpr VocabularyEntry ps_modes[] = {
    {"FIFO", 1}, {"PS-RR", 3},       {"PS-FB", 2},   {"CSMA/CD", 4},
    {"UNIX", 5}, {"LOSS-SYSTEM", 6}, {"Channel", 7},
};
inline constexpr VocabularyEntry exit_filters[] = {
    {"none", 0}, {"ACG 1", 1}, {"ACG 2", 2}, {"ACG 3", 3}};
inline constexpr VocabularyEntry distributions[] = {
    {"deterministic", 1}, {"exponential", 2},   {"user-model", 3}, {"erlang", 4}, {"televoting", 5},
    {"abr-greedy", 6},    {"trace1-driven", 7}, {"user1", 8},      {"user2", 9},
};
inline constexpr VocabularyEntry selection_rules[] = {
    {"FirstFree", 1}, {"LeastOccupied", 2}, {"ClassDependent", 3},
    {"Dedicated", 4}, {"Priority", 5},
};
inline constexpr VocabularyEntry measures[] = {
    {"end-to-end delay", 4}, {"interarrival distr", 5}, {"dynamic test", 1},
    {"throughput", 3},       {"efficiency", 2},
};
inline constexpr VocabularyEntry yes_no[] = {{"yes", 0}, {"no", 1}};

}  // namespace torve
