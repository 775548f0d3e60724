#include "desktop/x_server.hpp"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace torve::desktop {

namespace {

/// The display number that a starting server writes; nothing when it ends without one.
std::string read_number(int descriptor) {
  std::string number;
  char c = 0;
  while (wait_readable({descriptor}, patience) && read(descriptor, &c, 1) == 1 && c != '\n') {
    number += c;
  }
  return c == '\n' ? number : std::string();
}

}  // namespace

XServer::XServer(const std::string& screen) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  server_ = std::make_unique<Process>(Command{
      .words = {"Xvfb", "-displayfd", "3", "-screen", "0", screen, "-noreset", "-nolisten", "tcp"},
      .inherited = writing.get()});
  writing.close();
  const std::string number = read_number(reading.get());
  if (number.empty()) throw std::runtime_error("Xvfb does not start");
  name_ = ":" + number;
  display_ = XOpenDisplay(name_.c_str());
  if (display_ == nullptr) throw std::runtime_error("no connection to " + name_);
  // New windows, and the answers to pings, are reported to the root window.
  XSelectInput(display_, root(), SubstructureNotifyMask);
  XSync(display_, False);
}

XServer::~XServer() {
  if (display_ != nullptr) XCloseDisplay(display_);
}

void XServer::crash() {
  XCloseDisplay(display_);
  display_ = nullptr;
  server_->kill(SIGKILL);
  (void)server_->wait();
}

WindowId XServer::root() const {
  return DefaultRootWindow(display_);
}

bool XServer::next_event(const Process& client, void* event) {
  while (XPending(display_) == 0) {
    const int connection = ConnectionNumber(display_);
    if (!wait_readable({connection, client.end_descriptor()}, patience)) return false;
    if (XPending(display_) == 0 && wait_readable({client.end_descriptor()}, {})) return false;
  }
  XNextEvent(display_, static_cast<XEvent*>(event));
  return true;
}

WindowId XServer::wait_for_window(const Process& client) {
  XEvent event;
  while (next_event(client, &event)) {
    if (event.type == MapNotify) return event.xmap.window;
  }
  return 0;
}

void XServer::send(WindowId window, const char* protocol, long detail) {
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(display_, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(display_, protocol, False));
  event.xclient.data.l[1] = detail;
  event.xclient.data.l[2] = static_cast<long>(window);
  XSendEvent(display_, window, False, NoEventMask, &event);
  XFlush(display_);
}

bool XServer::ping(WindowId window, const Process& client) {
  // Input through XTest is in the window's queue once the server has answered us.
  XSync(display_, False);
  send(window, "_NET_WM_PING", ++last_ping_);
  XEvent event;
  while (next_event(client, &event)) {
    if (event.type == ClientMessage && event.xclient.data.l[1] == last_ping_) return true;
  }
  return false;
}

void XServer::ask_to_close(WindowId window) {
  send(window, "WM_DELETE_WINDOW", CurrentTime);
}

Area XServer::place_of(WindowId window) {
  XWindowAttributes attributes;
  XGetWindowAttributes(display_, window, &attributes);
  Window child = 0;
  Area area = {0, 0, attributes.width, attributes.height};
  XTranslateCoordinates(display_, window, root(), 0, 0, &area.x, &area.y, &child);
  return area;
}

void XServer::move_pointer(WindowId window, int x, int y) {
  const Area area = place_of(window);
  XTestFakeMotionEvent(display_, -1, area.x + x, area.y + y, CurrentTime);
}

void XServer::button(int number, bool down) {
  XTestFakeButtonEvent(display_, static_cast<unsigned>(number), down ? True : False, CurrentTime);
  XFlush(display_);
}

void XServer::key(unsigned long keysym) {
  const KeyCode code = XKeysymToKeycode(display_, keysym);
  if (code == 0) throw std::runtime_error("no such key");
  XTestFakeKeyEvent(display_, code, True, CurrentTime);
  XTestFakeKeyEvent(display_, code, False, CurrentTime);
}

Picture XServer::screenshot(WindowId window) {
  const Area area = place_of(window);
  XImage* image = XGetImage(display_, root(), area.x, area.y, static_cast<unsigned>(area.width),
                            static_cast<unsigned>(area.height), AllPlanes, ZPixmap);
  if (image == nullptr) return {};
  Picture picture = {.width = area.width, .height = area.height, .pixels = {}};
  for (int y = 0; y < area.height; ++y) {
    for (int x = 0; x < area.width; ++x) {
      picture.pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y)) & 0xFFFFFF);
    }
  }
  XDestroyImage(image);
  return picture;
}

WindowId XServer::cover(const Area& area) {
  const Window window =
      XCreateSimpleWindow(display_, root(), area.x, area.y, static_cast<unsigned>(area.width),
                          static_cast<unsigned>(area.height), 0, 0, 0x123456);
  XMapRaised(display_, window);
  XSync(display_, False);
  return window;
}

void XServer::uncover(WindowId window) {
  XDestroyWindow(display_, window);
  XSync(display_, False);
}

void XServer::move_window(WindowId window, int x, int y) {
  XMoveWindow(display_, window, x, y);
  XSync(display_, False);
}

}  // namespace torve::desktop
