#include "hosts/x11/Selection.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/x11/Events.h"

namespace quorvane::x11 {
namespace {

constexpr std::size_t kMostTargets = 256;

constexpr const char* kClipboard = "CLIPBOARD";
constexpr const char* kUtf8 = "UTF8_STRING";
constexpr const char* kTargets = "TARGETS";

/// Formats of a plain text, and what any owner offers besides. The last one is of use within a
/// GTK process only, which has the text itself.
constexpr auto kTextFormats = std::to_array<std::string_view>(
    {"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "DELETE", "LENGTH", "UTF8_STRING",
     "STRING", "TEXT", "COMPOUND_TEXT", "GTK_TEXT_BUFFER_CONTENTS"});

constexpr std::array<const char*, 3> kOffered{kUtf8, "TEXT", "text/plain;charset=utf-8"};

bool isTextFormat(std::string_view name) {
  return name.starts_with("text/plain") || std::ranges::count(kTextFormats, name) != 0;
}

std::vector<xcb_atom_t> atomsIn(const std::string& bytes) {
  std::vector<xcb_atom_t> atoms(std::min(bytes.size() / sizeof(xcb_atom_t), kMostTargets));
  std::memcpy(atoms.data(), bytes.data(), atoms.size() * sizeof(xcb_atom_t));
  return atoms;
}

}  // namespace

std::unique_ptr<Selection> Selection::open(Display& display, desktop::RunLoop& runLoop) {
  xcb_connection_t* const connection = display.connection();
  const auto* const extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
  if (extension == nullptr || extension->present == 0) return nullptr;
  const Owned<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
      connection, xcb_xfixes_query_version(connection, 1, 0), nullptr));
  if (!version) return nullptr;
  return std::unique_ptr<Selection>(new Selection(display, runLoop, extension->first_event));
}

Selection::Selection(Display& display, desktop::RunLoop& runLoop, std::uint8_t firstEvent)
    : display_(display), runLoop_(runLoop), firstEvent_(firstEvent), window_(display.makeWindow()) {
  xcb_connection_t* const connection = display.connection();
  xcb_xfixes_select_selection_input(connection, window_, atom(kClipboard),
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  const Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, atom(kClipboard)), nullptr));
  if (owner) owner_ = owner->owner;
  display.onEvent = [this](const xcb_generic_event_t& event) { handle(event); };
}

Selection::~Selection() {
  display_.onEvent = nullptr;
  conversion_.reset();
  xcb_destroy_window(display_.connection(), window_);
}

void Selection::look(std::function<void(Content)> then) {
  conversion_.reset();
  then_ = std::move(then);
  if (owner_ == XCB_NONE) return std::exchange(then_, {})({std::nullopt, true});
  conversion_ = std::make_unique<Conversion>(
      display_, runLoop_, atom(kClipboard), atom(kTargets),
      [this](const std::optional<std::string>& targets, xcb_atom_t type) {
        lookForText(targets && type == XCB_ATOM_ATOM && areText(*targets));
      });
}

void Selection::lookForText(bool isAll) {
  conversion_ =
      std::make_unique<Conversion>(display_, runLoop_, atom(kClipboard), atom(kUtf8),
                                   [this, isAll](std::optional<std::string> text, xcb_atom_t type) {
                                     if (type != atom(kUtf8)) text.reset();
                                     const bool hasText = text.has_value();
                                     std::exchange(then_, {})({std::move(text), isAll && hasText});
                                   });
}

bool Selection::areText(const std::string& targets) const {
  xcb_connection_t* const connection = display_.connection();
  std::vector<xcb_get_atom_name_cookie_t> asked;
  for (const xcb_atom_t each : atomsIn(targets)) {
    asked.push_back(xcb_get_atom_name(connection, each));
  }
  bool areAll = targets.size() <= kMostTargets * sizeof(xcb_atom_t);
  for (const auto cookie : asked) {
    const Owned<xcb_get_atom_name_reply_t> name(
        xcb_get_atom_name_reply(connection, cookie, nullptr));
    areAll = areAll && name && isTextFormat({xcb_get_atom_name_name(name.get()), name->name_len});
  }
  return areAll;
}

void Selection::own(std::string text) {
  text_ = std::move(text);
  taken_.reset();
  setOwner(window_);
}

void Selection::clear() {
  text_.clear();
  setOwner(XCB_NONE);
}

/// At the time of the copy whose place it takes: a newer one stays, and a client that copies anew
/// without a new key, and so at that time, isn't refused.
void Selection::setOwner(xcb_window_t owner) {
  owner_ = owner;
  ++settings_;
  xcb_set_selection_owner(display_.connection(), owner, atom(kClipboard), time_);
  display_.flush();
}

void Selection::handle(const xcb_generic_event_t& event) {
  const std::uint8_t kind = kindOf(event);
  if (kind == XCB_SELECTION_REQUEST) return answer(as<xcb_selection_request_event_t>(event));
  if (kind == firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
    const auto change = as<xcb_xfixes_selection_notify_event_t>(event);
    return onOwner(change.owner, change.selection_timestamp);
  }
  if (conversion_) conversion_->handle(event);
}

/// What somebody else did before the server had ours doesn't count; a newer copy refuses ours.
void Selection::onOwner(xcb_window_t owner, xcb_timestamp_t time) {
  const bool isOurs = owner == window_ || (owner == XCB_NONE && owner_ == XCB_NONE);
  const bool isNewer = time_ != XCB_CURRENT_TIME && static_cast<std::int32_t>(time - time_) > 0;
  if (settings_ != 0 && isOurs) --settings_;
  if (!isOurs && isNewer) settings_ = 0;
  if (settings_ != 0) return;
  time_ = time;
  if (isOurs) return;
  owner_ = owner;
  text_.clear();
  if (owner != XCB_NONE && copied) copied();
}

void Selection::answer(const xcb_selection_request_event_t& request) {
  const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  if (give(request.requestor, property, request.target)) notice.property = property;
  std::array<char, 32> bytes{};
  static_assert(sizeof notice <= bytes.size());
  std::memcpy(bytes.data(), &notice, sizeof notice);
  xcb_send_event(display_.connection(), 0, request.requestor, 0, bytes.data());
}

bool Selection::give(xcb_window_t window, xcb_atom_t property, xcb_atom_t target) {
  std::array<xcb_atom_t, kOffered.size() + 1> offered{};
  std::ranges::transform(kOffered, offered.begin(),
                         [this](const char* name) { return atom(name); });
  offered.back() = atom(kTargets);
  if (std::ranges::count(offered, target) == 0) return false;
  if (target != atom(kTargets)) return giveText(window, property, target);
  xcb_change_property(display_.connection(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM,
                      32, static_cast<std::uint32_t>(offered.size()), offered.data());
  return true;
}

/// A text of more than one request holds is none: a clipboard's is below that everywhere.
bool Selection::giveText(xcb_window_t window, xcb_atom_t property, xcb_atom_t target) {
  constexpr std::size_t kHead = 64;
  xcb_connection_t* const connection = display_.connection();
  const std::size_t room = std::size_t{xcb_get_maximum_request_length(connection)} * 4;
  if (text_.size() + kHead > room) return false;
  const xcb_atom_t type = target == atom("TEXT") ? atom(kUtf8) : target;
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                      static_cast<std::uint32_t>(text_.size()), text_.data());
  taken_ = std::chrono::steady_clock::now();
  return true;
}

}  // namespace quorvane::x11
