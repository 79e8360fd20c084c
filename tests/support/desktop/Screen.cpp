#include "tests/support/desktop/Screen.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <poll.h>

#include <stdexcept>
#include <thread>

namespace quorvane::tests {
namespace {

// A window may have gone since it was last looked at.
int ignoreError(Display* /*display*/, XErrorEvent* /*event*/) { return 0; }

KeySym keysymOf(const std::string& name) {
  const KeySym result = XStringToKeysym(name.c_str());
  if (result == NoSymbol) throw std::runtime_error("no key is called " + name);
  return result;
}

bool isWindow(const XEvent& event) {
  return event.type == MapNotify && event.xmap.override_redirect == False;
}

}  // namespace

Screen::Screen(const std::string& name) : display_(XOpenDisplay(name.c_str())) {
  if (display_ == nullptr) throw std::runtime_error("no display " + name);
  XSetErrorHandler(ignoreError);
  XSelectInput(display_, DefaultRootWindow(display_), SubstructureNotifyMask);
  XSync(display_, False);
}

Screen::~Screen() { XCloseDisplay(display_); }

std::string Screen::name() const { return DisplayString(display_); }

void Screen::forgetWindows() { XSync(display_, True); }

Screen::Window Screen::awaitWindow() {
  pollfd waiting{ConnectionNumber(display_), POLLIN, 0};
  while (XPending(display_) > 0 || ::poll(&waiting, 1, 30'000) > 0) {
    XEvent event;
    if (XPending(display_) == 0) continue;
    XNextEvent(display_, &event);
    if (isWindow(event)) return event.xmap.window;
  }
  throw std::runtime_error("no window has appeared");
}

bool Screen::hasFocus(Window window) const {
  Window focused = 0;
  int revert = 0;
  XGetInputFocus(display_, &focused, &revert);
  return focused == window;
}

void Screen::focus(Window window) {
  XRaiseWindow(display_, window);
  XSetInputFocus(display_, window, RevertToPointerRoot, CurrentTime);
  XSync(display_, False);
}

bool Screen::isOwned(const std::string& selection) const {
  return XGetSelectionOwner(display_, XInternAtom(display_, selection.c_str(), False)) != None;
}

std::string Screen::title(Window window) const {
  Atom type = 0;
  int format = 0;
  unsigned long size = 0;
  unsigned long rest = 0;
  unsigned char* bytes = nullptr;
  XGetWindowProperty(display_, window, XInternAtom(display_, "_NET_WM_NAME", False), 0, 65536,
                     False, AnyPropertyType, &type, &format, &size, &rest, &bytes);
  std::string result(reinterpret_cast<const char*>(bytes), bytes == nullptr ? 0 : size);
  if (bytes != nullptr) XFree(bytes);
  return result;
}

void Screen::send(unsigned long keysym, bool down) {
  XTestFakeKeyEvent(display_, XKeysymToKeycode(display_, keysym), down ? True : False, CurrentTime);
  XFlush(display_);
}

void Screen::key(const std::string& name, bool down) { send(keysymOf(name), down); }

void Screen::stroke(char character) {
  const KeySym keysym = character == '\n'   ? XK_Return
                        : character == '\t' ? XK_Tab
                                            : static_cast<unsigned char>(character);
  const bool shifted =
      XkbKeycodeToKeysym(display_, XKeysymToKeycode(display_, keysym), 0, 0) != keysym;
  if (shifted) send(XK_Shift_L, true);
  send(keysym, true);
  send(keysym, false);
  if (shifted) send(XK_Shift_L, false);
}

void Screen::type(std::string_view text, Pause pause) {
  for (const char character : text) {
    stroke(character);
    std::this_thread::sleep_for(pause);
  }
}

void Screen::press(std::string_view chord) {
  const std::size_t plus = chord.find('+');
  const std::string first(chord.substr(0, plus));
  key(first, true);
  if (plus != std::string_view::npos) press(chord.substr(plus + 1));
  key(first, false);
}

void Screen::click(Window window, int x, int y, unsigned button) {
  Window child = 0;
  XTranslateCoordinates(display_, window, DefaultRootWindow(display_), x, y, &x, &y, &child);
  XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
  XTestFakeButtonEvent(display_, button, True, CurrentTime);
  XTestFakeButtonEvent(display_, button, False, CurrentTime);
  XFlush(display_);
}

}  // namespace quorvane::tests
