// The strip: a row of text at the lower edge of the canvas, right of the icons.
//
// Whoever has something to say that a menu or the message window has no room for hands a line to
// it. It belongs to the base, beneath figures and windows, is empty at the start, and is cleared by
// the next press.
#pragma once

#include <string>

#include "base/rect.hpp"

namespace torve {

/// Where it lies: rows 589 to 599, right of the icons.
inline constexpr Rect strip_area = {320, 589, 800, 600};

/// Shows a text in place of the one before, cut where the strip ends.
void say_in_strip(const std::string& text);

/// Whether all of a text is to be seen there.
[[nodiscard]] bool fits_strip(const std::string& text);

/// The strip is empty afterwards.
void clear_strip();

/// It is empty, and nothing is painted: the canvas has been cleared.
void reset_strip();

/// What it says.
[[nodiscard]] const std::string& strip_text();

/// While one lives the strip says something else; what it said before comes back.
class StripNote {
 public:
  explicit StripNote(const std::string& text);
  ~StripNote();
  StripNote(const StripNote&) = delete;
  StripNote& operator=(const StripNote&) = delete;

 private:
  std::string before_;
};

}  // namespace torve
