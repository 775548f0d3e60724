// A private X server and our own connection to it, through which a test sees and acts.
#pragma once

#include <memory>
#include <string>

#include "desktop/picture.hpp"
#include "desktop/process.hpp"

// Xlib's names, without its macros in every test.
struct _XDisplay;

namespace torve::desktop {

using WindowId = unsigned long;

class XServer {
 public:
  explicit XServer(const std::string& screen = "1024x768x24");
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  [[nodiscard]] const std::string& name() const { return name_; }
  /// Ends the server at once, as a crash would.
  void crash();

  /// Waits until a client maps a window on the root and returns it; 0 when `client` ends first or
  /// nothing happens within the limit.
  [[nodiscard]] WindowId wait_for_window(const Process& client);

  /// Sends the window a ping and waits for its answer, which says that it has handled all input
  /// before and shows the result. False when no answer comes.
  [[nodiscard]] bool ping(WindowId window, const Process& client);
  /// What a window manager sends when the close button is pressed.
  void ask_to_close(WindowId window);

  /// Pointer and keys as from the devices; positions within `window`.
  void move_pointer(WindowId window, int x, int y);
  void button(int number, bool down);
  /// A key goes down and up again.
  void key(unsigned long keysym);

  /// What the screen shows in the area of the window.
  [[nodiscard]] Picture screenshot(WindowId window);

  /// Another program's window, in screen coordinates, above all others.
  [[nodiscard]] WindowId cover(const Area& area);
  void uncover(WindowId window);
  void move_window(WindowId window, int x, int y);

 private:
  /// The next event of ours, or false when `client` ends or the patience does.
  bool next_event(const Process& client, void* event);
  WindowId root() const;
  Area place_of(WindowId window);
  void send(WindowId window, const char* protocol, long detail);

  std::unique_ptr<Process> server_;
  std::string name_;
  _XDisplay* display_ = nullptr;
  long last_ping_ = 0;
};

}  // namespace torve::desktop
