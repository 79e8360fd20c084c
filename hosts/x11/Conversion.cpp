#include "hosts/x11/Conversion.h"

#include <utility>

#include "hosts/desktop/ClipboardFile.h"
#include "hosts/x11/Events.h"

namespace quorvane::x11 {

Conversion::Conversion(Display& display, desktop::RunLoop& runLoop, xcb_atom_t selection,
                       xcb_atom_t target, Then then)
    : display_(display),
      then_(std::move(then)),
      window_(display.makeWindow()),
      property_(display.atom("QUORVANE_SELECTION")),
      timer_(runLoop.addTimer(std::chrono::duration<double>(kPatience), Seconds{0},
                              [this] { end(false); })) {
  xcb_convert_selection(display.connection(), window_, selection, target, property_,
                        XCB_CURRENT_TIME);
  display.flush();
}

Conversion::~Conversion() { xcb_destroy_window(display_.connection(), window_); }

void Conversion::handle(const xcb_generic_event_t& event) {
  const std::uint8_t kind = kindOf(event);
  if (kind == XCB_SELECTION_NOTIFY) return onAnswer(as<xcb_selection_notify_event_t>(event));
  if (kind == XCB_PROPERTY_NOTIFY) onPart(as<xcb_property_notify_event_t>(event));
}

void Conversion::onAnswer(const xcb_selection_notify_event_t& answer) {
  if (answer.requestor != window_ || inParts_) return;
  const auto whole = answer.property != XCB_ATOM_NONE ? take() : nullptr;
  inParts_ = whole && whole->type == display_.atom("INCR");
  if (!inParts_) end(whole && append(*whole));
}

/// Taking a part asks for the next; an empty one is the last.
void Conversion::onPart(const xcb_property_notify_event_t& event) {
  const bool isNew = event.state == XCB_PROPERTY_NEW_VALUE && event.atom == property_;
  if (!inParts_ || !isNew || event.window != window_) return;
  const auto part = take();
  if (!part || !append(*part)) return end(false);
  if (xcb_get_property_value_length(part.get()) == 0) end(true);
}

Owned<xcb_get_property_reply_t> Conversion::take() const {
  constexpr std::uint32_t kWords = desktop::kClipboardLimit / 4;
  return Owned<xcb_get_property_reply_t>(
      xcb_get_property_reply(display_.connection(),
                             xcb_get_property(display_.connection(), 1, window_, property_,
                                              XCB_GET_PROPERTY_TYPE_ANY, 0, kWords),
                             nullptr));
}

bool Conversion::append(const xcb_get_property_reply_t& part) {
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(&part));
  if (part.bytes_after != 0 || bytes_.size() + length > desktop::kClipboardLimit) return false;
  bytes_.append(static_cast<const char*>(xcb_get_property_value(&part)), length);
  if (length != 0 || !inParts_) type_ = part.type;
  return true;
}

void Conversion::end(bool done) {
  const Then then = std::exchange(then_, {});
  timer_.reset();
  if (!then) return;
  std::optional<std::string> bytes;
  if (done) bytes = std::move(bytes_);
  then(std::move(bytes), type_);
}

}  // namespace quorvane::x11
