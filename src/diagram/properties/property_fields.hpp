// One field of a property menu: what it shows of a figure, and where it stores what was typed.
#pragma once

#include <array>
#include <span>
#include <string>

#include "diagram/model/vobj.hpp"
#include "diagram/properties/vocabulary.hpp"
#include "dialogs/menu_table.hpp"

namespace torve {

/// Where a figure keeps a field's value.
using IntegerOf = int& (*)(Vobj& figure);
using RealOf = double& (*)(Vobj& figure);

template <int Vobj::*member>
int& integer_of(Vobj& figure) {
  return figure.*member;
}
template <int n>
int& int_of(Vobj& figure) {
  return figure.integer[n - 1];
}
template <int n>
double& value_of(Vobj& figure) {
  return figure.value[n - 1];
}

/// A field shows an integer, a real, or, when neither is given, the name.
struct PropertyField {
  MenuField place;
  IntegerOf integer = nullptr;
  RealOf real = nullptr;  // shown as "%g"
  Vocabulary words = {};  // the integer is the code of one of these
  int first_entry = 0;    // of the words: for a code that is none
  int code_bits = 0;      // 0: the integer is the code; otherwise its low bits are, and what
                          // is above them stands behind the word, after a blank
};

inline constexpr int properties_of_a_line = 2;  // at most

/// A line of a property menu.
struct PropertyLine {
  const char* text = "";
  std::array<PropertyField, properties_of_a_line> fields = {};  // the first ones with a number

  [[nodiscard]] constexpr LineFields places() const {
    LineFields all = {};
    for (std::size_t i = 0; i < fields.size(); ++i)
      all[i] = fields[i].place;
    return all;
  }
};

/// The lines of a property menu, whose fields the compiler finds to fit them.
class PropertyLines {
 public:
  template <std::size_t count>
  consteval PropertyLines(const PropertyLine (&lines)[count]) : lines_(lines) {
    for (const PropertyLine& line : lines_) {
      if (!fields_fit(line.text, line.places())) throw "a field does not fit its line";
    }
  }
  [[nodiscard]] constexpr std::span<const PropertyLine> all() const { return lines_; }
  /// Only the first ones.
  [[nodiscard]] constexpr PropertyLines first(std::size_t count) const {
    PropertyLines part = *this;
    part.lines_ = lines_.first(count);
    return part;
  }

 private:
  std::span<const PropertyLine> lines_;
};

/// The text that a field shows of a figure. A code that has no word becomes the one of the first
/// entry, in the figure, too.
[[nodiscard]] std::string property_text(const PropertyField& field, Vobj& figure);

/// Stores a text. What is no word of the vocabulary, or no number, is reported, and the figure
/// keeps what it had; a number with decimals is none where whole ones are stored. The figure keeps
/// it, too, when the text is what property_text says: a real has more digits than that shows.
void store_property(const PropertyField& field, Vobj& figure, const char* text);

}  // namespace torve
