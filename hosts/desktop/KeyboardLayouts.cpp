#include "hosts/desktop/KeyboardLayouts.h"

#include "hosts/keyboard/StandardLayouts.h"

namespace quorvane::desktop {
namespace {

const std::string kUS = "us";

std::string nameOf(const xkb::RuleNames& names) {
  const std::string& layout = names.layout.empty() ? kUS : names.layout;
  return names.variant.empty() ? layout : layout + "(" + names.variant + ")";
}

TISInputSourceRef sourceOf(const std::string& name, keyboard::LayoutData data) {
  return std::make_shared<TISInputSource>(
      TISInputSource{"xkb:" + name, name, true, std::move(data)});
}

}  // namespace

TISInputSourceRef KeyboardLayouts::current() {
  read();
  return current_;
}

TISInputSourceRef KeyboardLayouts::asciiCapable() {
  read();
  return typesAscii_ ? current_ : us();
}

void KeyboardLayouts::read() {
  xkb::RuleNames names = xkb::chosenLayout();
  if (names == names_) return;
  const std::string name = nameOf(names);
  if (auto data = xkb::layoutOf(names)) {
    current_ = sourceOf(name, std::move(data));
  } else {
    if (log_.enabled) log_.writeLine("* * * there is no keyboard layout " + name + "; us is taken");
    current_ = us();
  }
  typesAscii_ = xkb::typesAscii(current_->kTISPropertyUnicodeKeyLayoutData);
  names_ = std::move(names);
}

/// Without keymap files it is the one that we bring along.
TISInputSourceRef KeyboardLayouts::us() {
  if (us_ == nullptr) {
    auto data = xkb::layoutOf(xkb::parseLayoutName(kUS));
    us_ = sourceOf(kUS, data == nullptr ? keyboard::usLayout() : std::move(data));
  }
  return us_;
}

}  // namespace quorvane::desktop
