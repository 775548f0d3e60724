#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <unistd.h>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "display/colours.hpp"
#include "display/ending_signals.hpp"
#include "display/graph.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "display/window_icon.hpp"
#include "display/x11_state.hpp"

namespace torve {

Display* display = nullptr;
int screen = 0;
Window win = 0;
Window hover_win = 0;
GC gc = nullptr;
Colormap colormap = 0;
WindowProtocols window_protocols;

namespace {

constexpr int window_border = 4;  // pixels
constexpr const char* window_name = "TORVE application";
constexpr const char* window_name_unsaved = "TORVE application *";
constexpr const char* icon_name = "basicwin";
constexpr const char* server_font = "9x15";
constexpr long event_mask = KeyPressMask | ButtonPressMask | ButtonReleaseMask | ButtonMotionMask |
                            ExposureMask | StructureNotifyMask;

enum AtomIndex {
  utf8_string,
  net_wm_name,
  net_wm_pid,
  wm_protocols,
  wm_delete_window,
  net_wm_ping,
  atom_count
};
constexpr std::array<const char*, atom_count> atom_names = {"UTF8_STRING",      "_NET_WM_NAME",
                                                            "_NET_WM_PID",      "WM_PROTOCOLS",
                                                            "WM_DELETE_WINDOW", "_NET_WM_PING"};
std::array<Atom, atom_count> atoms;

XFontStruct* font_info = nullptr;
XSizeHints size_hints;
bool own_colormap = false;
bool marked_unsaved = false;
void (*connection_lost_handler)() = nullptr;
XErrorHandler other_errors = nullptr;  // what the library does about an error

constexpr DisplayBackend x11_backend = {
    .wait_event = wait_x11_event,
    .wait_readable = wait_x11_readable,
    .event_pending = x11_event_pending,
    .drop_events = drop_x11_events,
    .drop_key = drop_x11_key,
    .push = push_to_x11,
    .offer_text = offer_x11_text,
    .change_scale = change_x11_scale,
};

int note_lost_connection(Display*) {
  std::fputs("the connection to the X server is lost\n", stdout);
  set_display_backend(nullptr);
  if (connection_lost_handler != nullptr) connection_lost_handler();
  std::fflush(stdout);
  std::exit(1);
}

// Another client may destroy the window at any time; what is still drawn until that is known goes
// nowhere, and is no reason to end without a word and without saving the diagram. Nor is a program
// that has gone before it got the text that it asked for.
int ignore_gone_window(Display* connection, XErrorEvent* error) {
  const bool is_about_us = error->resourceid == win || error->resourceid == requestor;
  const bool is_gone = error->error_code == BadWindow || error->error_code == BadDrawable;
  return is_about_us && is_gone ? 0 : other_errors(connection, error);
}

[[noreturn]] void give_up(const char* reason) {
  std::fputs(reason, stdout);
  std::fflush(stdout);
  std::exit(-1);
}

bool shows_our_pixels(const Visual* visual) {
  return visual->red_mask == 0xFF0000 && visual->green_mask == 0xFF00 && visual->blue_mask == 0xFF;
}

// A visual whose pixel values are 0xRRGGBB: the screen's own if it is one, else any other.
Visual* find_visual() {
  Visual* visual = DefaultVisual(display, screen);
  if (DefaultDepth(display, screen) == screen_planes && visual->c_class == TrueColor &&
      shows_our_pixels(visual)) {
    colormap = DefaultColormap(display, screen);
    return visual;
  }
  XVisualInfo info;
  if (XMatchVisualInfo(display, screen, screen_planes, TrueColor, &info) == 0 ||
      !shows_our_pixels(info.visual)) {
    return nullptr;
  }
  colormap = XCreateColormap(display, RootWindow(display, screen), info.visual, AllocNone);
  own_colormap = true;
  return info.visual;
}

// All in one round trip: over a slow line each one is seen.
void look_up_atoms() {
  std::array<char*, atom_count> names;
  std::transform(atom_names.begin(), atom_names.end(), names.begin(),
                 [](const char* name) { return const_cast<char*>(name); });
  XInternAtoms(display, names.data(), atom_count, False, atoms.data());
}

unsigned enlarged_width() {
  return static_cast<unsigned>(screen_width * scale);
}

unsigned enlarged_height() {
  return static_cast<unsigned>(screen_height * scale);
}

void create_window(Visual* visual) {
  XSetWindowAttributes attributes = {};
  attributes.background_pixel = WhitePixel(display, screen);
  attributes.border_pixel = BlackPixel(display, screen);
  attributes.colormap = colormap;
  // A visual that is not the screen's own needs a background that exists in it.
  if (own_colormap) attributes.background_pixel = 0xFFFFFF;
  win = XCreateWindow(display, RootWindow(display, screen), 0, 0, enlarged_width(),
                      enlarged_height(), window_border, screen_planes, InputOutput, visual,
                      CWBackPixel | CWBorderPixel | CWColormap, &attributes);
}

// Motions without a button are asked for apart: the window itself goes on hearing only of those
// that drag. Presses and keys pass through to it.
void create_hover_window() {
  constexpr unsigned any_size = 32767;  // however large the window becomes
  XSetWindowAttributes attributes = {};
  attributes.event_mask = PointerMotionMask | LeaveWindowMask;
  hover_win = XCreateWindow(display, win, 0, 0, any_size, any_size, 0, 0, InputOnly, nullptr,
                            CWEventMask, &attributes);
  XMapWindow(display, hover_win);
}

void set_size_hints() {
  size_hints = {};
  size_hints.flags = PPosition | PSize | PMinSize;
  size_hints.width = size_hints.min_width = screen_width * scale;
  size_hints.height = size_hints.min_height = screen_height * scale;
}

// WM_NAME is the title that other programs find the window by, and never changes.
void set_long_name(const char* name) {
  XChangeProperty(display, win, atoms[net_wm_name], atoms[utf8_string], 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(name),
                  static_cast<int>(std::char_traits<char>::length(name)));
}

void name_window(int argc, char** argv) {
  const Pixmap icon =
      XCreateBitmapFromData(display, win, reinterpret_cast<const char*>(bunny_bits.data()),
                            window_icon_size, window_icon_size);
  set_size_hints();
  XSetStandardProperties(display, win, window_name, icon_name, icon, argv, argc, &size_hints);

  char instance[] = "torve";
  char application[] = "Torve";
  XClassHint class_hint = {instance, application};
  XSetClassHint(display, win, &class_hint);

  set_long_name(window_name);
}

// Who we are and what we answer, so that a window manager can close the window or notice that it
// no longer answers.
void join_protocols() {
  long process = getpid();  // format 32 means C longs
  XChangeProperty(display, win, atoms[net_wm_pid], XA_CARDINAL, 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(&process), 1);
  char host[256] = {};
  if (gethostname(host, sizeof host - 1) == 0) {
    char* list = host;
    XTextProperty property;
    if (XStringListToTextProperty(&list, 1, &property) != 0) {
      XSetWMClientMachine(display, win, &property);
      XFree(property.value);
    }
  }
  window_protocols = {atoms[wm_protocols], atoms[wm_delete_window], atoms[net_wm_ping]};
  Atom offered[] = {window_protocols.delete_window, window_protocols.ping};
  XSetWMProtocols(display, win, offered, static_cast<int>(std::size(offered)));
}

void load_font(XFontStruct** info) {
  *info = XLoadQueryFont(display, server_font);
  if (*info == nullptr) give_up("cannot open font\n");
}

void get_GC(Window window, GC* context, const XFontStruct* info) {
  constexpr int line_width = 6;
  constexpr char dashes[] = {12, 24};
  *context = XCreateGC(display, window, 0, nullptr);
  XSetFont(display, *context, info->fid);
  XSetForeground(display, *context, BlackPixel(display, screen));
  XSetLineAttributes(display, *context, line_width, LineOnOffDash, CapRound, JoinRound);
  XSetDashes(display, *context, 0, dashes, static_cast<int>(std::size(dashes)));
}

// What a visual of eight bits a colour answers; no need to ask.
bool compute_x11_colour(ColourRecord& record) {
  constexpr int full_byte = 0x101;  // 0xFF becomes 0xFFFF
  for (std::uint16_t* part : {&record.red, &record.green, &record.blue})
    *part = static_cast<std::uint16_t>((*part >> 8) * full_byte);
  return allocate_true_colour(record);
}

bool allocate_x11_colour(ColourRecord& record) {
  XColor colour = {};
  colour.red = record.red;
  colour.green = record.green;
  colour.blue = record.blue;
  colour.flags = DoRed | DoGreen | DoBlue;
  if (XAllocColor(display, colormap, &colour) == 0) return false;
  record = {static_cast<std::uint32_t>(colour.pixel), colour.red, colour.green, colour.blue};
  return true;
}

void wait_until_exposed() {
  InputEvent event;
  do {
    wait_x11_event(event);
    if (event.type == InputEvent::Type::close) std::exit(1);
  } while (event.type != InputEvent::Type::expose);
  drop_x11_events(InputEvent::Type::expose);
}

}  // namespace

void initgraph(int argc, char** argv) {
  gplanes = screen_planes;
  display = XOpenDisplay(nullptr);
  if (display == nullptr) give_up("X not started\n");
  XSetIOErrorHandler(note_lost_connection);
  other_errors = XSetErrorHandler(ignore_gone_window);
  screen = DefaultScreen(display);
  Visual* visual = find_visual();
  if (visual == nullptr) give_up("X not started\n");
  if (!create_screen_image()) give_up("no memory for the screen image\n");
  scale = start_scale();
  create_x11_images(visual);
  look_up_atoms();
  create_window(visual);
  create_hover_window();
  name_window(argc, argv);
  join_protocols();
  XSelectInput(display, win, event_mask);
  load_font(&font_info);
  get_GC(win, &gc, font_info);
  allocate_colours(visual->bits_per_rgb == 8 ? compute_x11_colour : allocate_x11_colour);
  reset_screen_state();
  reset_input();
  XMapWindow(display, win);
  wait_until_exposed();
  set_display_backend(&x11_backend);
  watch_ending_signals();
}

// What the picture does not cover any more is cleared; where the window does not get its new size
// it would stay.
void resize_window() {
  set_size_hints();
  XSetWMNormalHints(display, win, &size_hints);
  XResizeWindow(display, win, enlarged_width(), enlarged_height());
  XClearWindow(display, win);
}

void set_connection_lost_handler(void (*handler)()) {
  connection_lost_handler = handler;
}

void mark_window_unsaved(bool unsaved) {
  if (display != nullptr && unsaved != marked_unsaved)
    set_long_name(unsaved ? window_name_unsaved : window_name);
  marked_unsaved = unsaved;
}

int endgraph() {
  if (display == nullptr) return 0;
  present();
  set_display_backend(nullptr);
  XFreeFont(display, font_info);
  XFreeGC(display, gc);
  destroy_x11_images();
  XCloseDisplay(display);
  display = nullptr;
  font_info = nullptr;
  gc = nullptr;
  win = hover_win = 0;
  release_screen_image();
  return 0;
}

}  // namespace torve
