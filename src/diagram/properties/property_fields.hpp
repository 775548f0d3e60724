// One field of a property menu: what it shows of a figure, and where it stores what was typed.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "diagram/model/figure_properties.hpp"
#include "dialogs/menu_table.hpp"

namespace torve {

/// A field shows a property of the figure.
struct PropertyField {
  MenuField place;
  FigureProperty property;
};

/// The one of a menu that files know under a key.
consteval PropertyField shown(MenuField place, FigureMenu menu, std::string_view key) {
  return {place, property_with(menu, key)};
}

inline constexpr int fields_of_a_property_line = 2;  // at most

/// A line of a property menu.
struct PropertyLine {
  const char* text = "";
  std::array<PropertyField, fields_of_a_property_line> fields = {};  // the first ones with a number

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
    check();
  }
  template <std::size_t count>
  consteval PropertyLines(const std::array<PropertyLine, count>& lines) : lines_(lines) {
    check();
  }
  [[nodiscard]] constexpr std::span<const PropertyLine> all() const { return lines_; }
  /// Only the first ones.
  [[nodiscard]] constexpr PropertyLines first(std::size_t count) const {
    PropertyLines part = *this;
    part.lines_ = lines_.first(count);
    return part;
  }

 private:
  consteval void check() const {
    for (const PropertyLine& line : lines_) {
      if (!fields_fit(line.text, line.places())) throw "a field does not fit its line";
    }
  }

  std::span<const PropertyLine> lines_;
};

/// The text that a field shows of a figure. A code that has no word becomes the one of the first
/// entry, in the figure, too.
[[nodiscard]] std::string property_text(const PropertyField& field, FigureRecord& figure);

/// Stores a text. What is no word of the vocabulary, or no number, is reported, and the figure
/// keeps what it had; a number with decimals is none where whole ones are stored. The figure keeps
/// it, too, when the text is what property_text says: a real has more digits than that shows. A
/// share is a number from 0 to 1, or none when nothing was typed.
void store_property(const PropertyField& field, FigureRecord& figure, const char* text);

}  // namespace torve
