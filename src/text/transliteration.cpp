#include "text/transliteration.hpp"

#include <cstring>

namespace torve {

namespace {

struct PolishLetter {
  char letter, marker, code;
};

constexpr PolishLetter polish_letters[] = {
    {'l', '/', 1},   {'a', ',', 2},   {'e', ',', 3},   {'c', '\'', 4},  {'s', '\'', 5},
    {'z', '\'', 6},  {'z', '.', 7},   {'o', '\'', 8},  {'L', '/', 9},   {'A', ',', 10},
    {'E', ',', 11},  {'C', '\'', 12}, {'S', '\'', 13}, {'Z', '\'', 14}, {'Z', '.', 15},
    {'n', '\'', 16}, {'O', '\'', 23}, {'N', '\'', 24},
};

struct ScandinavianLetter {
  unsigned char character;
  char code;
};

constexpr ScandinavianLetter scandinavian_letters[] = {
    {134, 17}, {132, 18}, {148, 19}, {143, 20}, {142, 21}, {153, 22},
};

constexpr const char* markers = "/,'.";

char polish_code(char letter, char marker) {
  for (const PolishLetter& pair : polish_letters) {
    if (pair.letter == letter && pair.marker == marker) return pair.code;
  }
  return 0;
}

bool is_polish_letter(char letter) {
  for (const PolishLetter& pair : polish_letters) {
    if (pair.letter == letter) return true;
  }
  return false;
}

}  // namespace

int insertPolishChars(char* text) {
  int replaced = 0;
  for (char* at = text; at[0] != 0 && at[1] != 0; ++at) {
    if (!is_polish_letter(at[0]) || std::strchr(markers, at[1]) == nullptr) continue;
    const char code = polish_code(at[0], at[1]);
    replaced = code != 0 ? 1 : 0;
    if (code == 0) continue;
    at[0] = code;
    std::memmove(at + 1, at + 2, std::strlen(at + 2) + 1);
  }
  return replaced;
}

void insertScandiChars(char* character) {
  for (const ScandinavianLetter& letter : scandinavian_letters) {
    if (letter.character == static_cast<unsigned char>(*character)) {
      *character = letter.code;
      return;
    }
  }
}

}  // namespace torve
