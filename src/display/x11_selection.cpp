// The text that other programs may paste: PRIMARY, pasted by the middle button, and CLIPBOARD, by a
// menu or a key. Both hold the same text, as UTF-8.
#include <array>
#include <string>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include "display/input.hpp"
#include "display/x11_state.hpp"

namespace torve {

Window requestor = 0;

namespace {

std::string offered;

Atom atom(const char* name) {
  return XInternAtom(display, name, False);
}

// Whether the requestor has got what it wants, in the property that it names.
bool deliver(const XSelectionRequestEvent& request, Atom property) {
  const Atom utf8 = atom("UTF8_STRING");
  const Atom targets = atom("TARGETS");
  if (request.target == targets) {
    const std::array<Atom, 2> kinds = {targets, utf8};
    XChangeProperty(display, request.requestor, property, XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(kinds.data()),
                    static_cast<int>(kinds.size()));
    return true;
  }
  if (request.target != utf8) return false;
  XChangeProperty(display, request.requestor, property, utf8, 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(offered.data()),
                  static_cast<int>(offered.size()));
  return true;
}

void answer(const XSelectionRequestEvent& request) {
  requestor = request.requestor;
  // A requestor of the old kind names no property and reads the one that is called as the target.
  const Atom property = request.property != None ? request.property : request.target;
  XEvent notice = {};
  notice.xselection.type = SelectionNotify;
  notice.xselection.requestor = request.requestor;
  notice.xselection.selection = request.selection;
  notice.xselection.target = request.target;
  notice.xselection.property = deliver(request, property) ? property : None;
  notice.xselection.time = request.time;
  XSendEvent(display, request.requestor, False, NoEventMask, &notice);
  XFlush(display);
}

}  // namespace

void offer_x11_text(const std::string& text) {
  offered = text;
  for (const Atom selection : {Atom{XA_PRIMARY}, atom("CLIPBOARD")})
    XSetSelectionOwner(display, selection, win, last_event.time);
  XFlush(display);
}

bool answer_selection_event(XEvent& event) {
  if (event.type == SelectionRequest) answer(event.xselectionrequest);
  return event.type == SelectionRequest || event.type == SelectionClear;
}

}  // namespace torve
