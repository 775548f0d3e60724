#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

#include <X11/Xlib.h>
#include <X11/Xresource.h>

#include "display/scale.hpp"
#include "display/screen_image.hpp"
#include "display/x11_state.hpp"

namespace torve {

int scale = 1;

namespace {

constexpr double usual_dpi = 96;  // dots an inch of a screen whose pixels are large enough

int asked_for = 0;

// What desktops say about their screen. The server's own idea of its size is mostly made up.
std::optional<double> resolution() {
  char* const resources = XResourceManagerString(display);
  if (resources == nullptr) return std::nullopt;
  XrmInitialize();
  const XrmDatabase database = XrmGetStringDatabase(resources);
  char* type = nullptr;
  XrmValue value = {};
  double dpi = 0;
  bool is_number = false;
  if (XrmGetResource(database, "Xft.dpi", "Xft.Dpi", &type, &value) == True) {
    const std::string_view text = value.addr;
    is_number = std::from_chars(text.begin(), text.end(), dpi).ec == std::errc();
  }
  XrmDestroyDatabase(database);
  return is_number ? std::optional(dpi) : std::nullopt;
}

int scale_for(double dpi) {
  const int fits = std::min(DisplayWidth(display, screen) / screen_width,
                            DisplayHeight(display, screen) / screen_height);
  const double wanted = std::floor(dpi / usual_dpi + 0.5);
  return std::clamp(static_cast<int>(std::clamp(wanted, 1.0, double{largest_scale})), 1,
                    std::max(fits, 1));
}

}  // namespace

void ask_for_scale(int wanted) {
  asked_for = std::clamp(wanted, 0, largest_scale);
}

int start_scale() {
  if (asked_for != 0) return asked_for;
  const auto dpi = resolution();
  return dpi && !std::isnan(*dpi) ? scale_for(*dpi) : 1;
}

bool change_x11_scale(int by) {
  if (display == nullptr || by < 1 - scale || by > largest_scale - scale) return false;
  if (!create_staging(scale + by)) return false;
  scale += by;
  resize_window();
  mark_dirty(whole_screen);
  return true;
}

}  // namespace torve
