#include <algorithm>
#include <cstring>
#include <utility>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

#include "display/ending_signals.hpp"
#include "display/screen_image.hpp"
#include "display/x11_state.hpp"

namespace torve {

namespace {

using Type = InputEvent::Type;

Modifiers modifiers_in(unsigned state) {
  constexpr std::pair<unsigned, Modifiers> masks[] = {
      {ShiftMask, Modifiers::shift}, {ControlMask, Modifiers::control}, {Mod1Mask, Modifiers::alt}};
  Modifiers held = Modifiers::none;
  for (const auto& [mask, modifier] : masks) {
    if ((state & mask) != 0) held = held | modifier;
  }
  return held;
}

// The pixel of the image that a window's position, which may be negative, lies in.
int in_image(int position) {
  return (position >= 0 ? position : position - (scale - 1)) / scale;
}

// Of the pointer, at a key too.
template <typename XDeviceEvent>
void translate_position(const XDeviceEvent& x_event, InputEvent& event) {
  event.x = in_image(x_event.x);
  event.y = in_image(x_event.y);
  event.modifiers = modifiers_in(x_event.state);
  event.time = static_cast<std::uint32_t>(x_event.time);
}

void translate_key(XKeyEvent& key, InputEvent& event) {
  KeySym symbol = NoSymbol;
  event.character_count =
      std::max(0, XLookupString(&key, event.characters, sizeof event.characters, &symbol, nullptr));
  event.keysym = symbol;
  event.is_modifier = IsModifierKey(symbol);
  translate_position(key, event);
}

void translate_button(const XButtonEvent& button, InputEvent& event) {
  translate_position(button, event);
  event.button = static_cast<int>(button.button);
}

bool is_protocol(const XClientMessageEvent& message, Atom protocol) {
  return message.message_type == window_protocols.protocols && message.format == 32 &&
         static_cast<Atom>(message.data.l[0]) == protocol;
}

// The answer says: everything before the ping has been handled and is on the screen.
void answer_ping(XEvent& ping) {
  present();
  const Window root = RootWindow(display, screen);
  ping.xclient.window = root;
  XSendEvent(display, root, False, SubstructureNotifyMask | SubstructureRedirectMask, &ping);
  XFlush(display);
}

Type type_of(const XEvent& x_event) {
  switch (x_event.type) {
    case KeyPress:
      return Type::key;
    case ButtonPress:
      return Type::press;
    case ButtonRelease:
      return Type::release;
    case MotionNotify:
      return x_event.xmotion.window == hover_win ? Type::hover : Type::motion;
    case LeaveNotify:  // for the time of a press the pointer is only the window's
      return x_event.xcrossing.mode == NotifyNormal ? Type::leave : Type::other;
    case Expose:
      return Type::expose;
    case ConfigureNotify:
      return Type::resize;
    case DestroyNotify:  // by another client: there is nothing left to show anything in
      return Type::close;
    case ClientMessage:
      return is_protocol(x_event.xclient, window_protocols.delete_window) ? Type::close
                                                                          : Type::other;
    default:
      return Type::other;
  }
}

void translate(XEvent& x_event, InputEvent& event) {
  event = {};
  event.type = type_of(x_event);
  switch (event.type) {
    case Type::key:
      translate_key(x_event.xkey, event);
      break;
    case Type::press:
    case Type::release:
      translate_button(x_event.xbutton, event);
      break;
    case Type::motion:
    case Type::hover:
      translate_position(x_event.xmotion, event);
      break;
    case Type::resize:
      event.width = in_image(x_event.xconfigure.width);
      event.height = in_image(x_event.xconfigure.height);
      break;
    default:
      break;
  }
}

int x_type_of(Type type) {
  switch (type) {
    case Type::key:
      return KeyPress;
    case Type::press:
      return ButtonPress;
    case Type::expose:
      return Expose;
    default:
      return 0;
  }
}

Bool is_about_window(Display*, XEvent* event, XPointer) {
  switch (event->type) {
    case KeyPress:
    case ButtonPress:
    case ButtonRelease:
    case MotionNotify:
    case LeaveNotify:
      return False;
    default:
      return True;
  }
}

bool is_hover(const XEvent& event) {
  return event.type == MotionNotify && event.xmotion.window == hover_win;
}

// Of motions without a button that wait one behind the other the last one counts.
void skip_to_last_hover(XEvent& event) {
  XEvent next;
  while (is_hover(event) && XEventsQueued(display, QueuedAlready) > 0) {
    XPeekEvent(display, &next);
    if (!is_hover(next)) return;
    XNextEvent(display, &event);
  }
}

Bool is_press_of_key(Display*, XEvent* event, XPointer code) {
  return event->type == KeyPress && event->xkey.keycode == static_cast<unsigned char>(*code)
             ? True
             : False;
}

// What is told to the program alone goes no further; true for an event that does.
bool hand_on(XEvent& x_event, InputEvent& event) {
  if (x_event.type == MappingNotify) XRefreshKeyboardMapping(&x_event.xmapping);
  if (x_event.type == ClientMessage && is_protocol(x_event.xclient, window_protocols.ping)) {
    answer_ping(x_event);
    return false;
  }
  if (answer_selection_event(x_event)) return false;
  skip_to_last_hover(x_event);
  translate(x_event, event);
  return true;
}

bool is_asked_to_end(Waited waited, InputEvent& event) {
  if (waited == Waited::asked_to_end) event = {.type = Type::close};
  return waited == Waited::asked_to_end;
}

}  // namespace

void wait_x11_event(InputEvent& event) {
  XEvent x_event;
  do {
    if (XPending(display) == 0 &&
        is_asked_to_end(wait_unless_asked_to_end(ConnectionNumber(display)), event)) {
      return;
    }
    XNextEvent(display, &x_event);
  } while (!hand_on(x_event, event));
}

bool wait_x11_readable(int descriptor, InputEvent& event) {
  XEvent x_event;
  for (;;) {
    while (XCheckIfEvent(display, &x_event, is_about_window, nullptr) == True) {
      if (hand_on(x_event, event)) return false;
    }
    const Waited waited = wait_unless_asked_to_end(ConnectionNumber(display), descriptor);
    if (is_asked_to_end(waited, event)) return false;
    if (waited == Waited::other) return true;
  }
}

bool x11_event_pending() {
  return XPending(display) > 0;
}

bool drop_x11_events(Type type) {
  bool any = false;
  XEvent ignored;
  while (XCheckTypedEvent(display, x_type_of(type), &ignored) == True)
    any = true;
  return any;
}

bool drop_x11_key(unsigned long keysym) {
  bool any = false;
  XEvent ignored;
  char code = static_cast<char>(XKeysymToKeycode(display, keysym));
  while (XCheckIfEvent(display, &ignored, is_press_of_key, &code) == True)
    any = true;
  return any;
}

}  // namespace torve
