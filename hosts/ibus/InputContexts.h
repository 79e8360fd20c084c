#pragma once
// The text fields of other processes, as the framework tells of them one after the other, and the
// way of a key through the one that has the focus. Fields with secrets are passed by: nobody here
// keeps anything of them, whatever the order in which focus and kind of a field come.

#include <array>
#include <functional>
#include <list>
#include <set>
#include <string>
#include <string_view>

#include "hosts/desktop/StatusFile.h"
#include "hosts/field/TextApplication.h"
#include "hosts/ibus/Composer.h"
#include "hosts/ibus/TextField.h"

namespace quorvane::ibus {

/// What the rest of the process does for the fields; outlives them.
struct Attendants {
  TextField::Session session;  ///< of the field that has the focus
  std::function<void()> keyBegins;
  /// The latest key is so long ago that its client has handled it. False: calls `settle` then.
  std::function<bool()> isQuiet;
  std::function<void()> catchUp;  ///< handles what has come in meanwhile, without waiting
  std::function<void(std::string_view client)> toFront;  ///< a program's field gets keys now
  std::function<bool()> completes;  ///< words are completed there: letters may wait to be its text
  std::function<void(EditFault why)> leftOut;  ///< an edit wasn't made
};

/// `purpose` and `hints` as in IBusInputPurpose and IBusInputHints: password, PIN, private, and
/// terminals, whose prompts can't be told from text.
bool isSecret(std::uint32_t purpose, std::uint32_t hints);

class InputContexts {
 public:
  /// Both references outlive this.
  InputContexts(field::TextApplication& application, Wire& wire, Attendants attendants);
  InputContexts(const InputContexts&) = delete;
  InputContexts& operator=(const InputContexts&) = delete;

  // What the framework tells.

  /// `client` as it calls itself: "gtk3-im:mousepad", "fake".
  void focusIn(std::string_view path, std::string_view client);
  void focusOut();
  void setContentType(std::uint32_t purpose, std::uint32_t hints);
  void setCapabilities(std::uint32_t capabilities);
  void setSurroundingText(CaretText text);
  /// Screen points, y upwards.
  void setLine(const NSRect& line);
  /// True: consumed.
  bool processKey(const Key& key);

  /// What came about between keys goes to the client.
  void settle();
  [[nodiscard]] desktop::FieldKind kind() const;
  /// Edits that weren't made, by their faults.
  [[nodiscard]] const std::array<std::uint64_t, kEditFaults>& leftOut() const { return leftOut_; }
  /// The one that has the focus and may be told of keys; null: none.
  [[nodiscard]] TextField* current() { return isOpen() ? &focused_->field : nullptr; }
  /// What its client calls itself; empty: there is none.
  [[nodiscard]] std::string_view client() const {
    return isOpen() ? std::string_view(focused_->client) : std::string_view();
  }
  /// It is known by this; empty: there is none.
  [[nodiscard]] std::string_view path() const {
    return isOpen() ? std::string_view(focused_->path) : std::string_view();
  }
  /// Something other than a key is to be done to it.
  void attend() {
    if (isOpen()) enter();
  }

 private:
  struct Context {
    std::string path;
    std::string client;
    TextField& field;
  };

  [[nodiscard]] bool isOpen() const { return focused_ != nullptr && !secret_; }
  Context& contextOf(std::string_view path, std::string_view client);
  void leave();
  void enter();
  bool press(const NSEvent& event, bool repeats);
  bool passOn(const Key& key, const NSEvent* event);
  bool noteDropped();
  void startAfresh();

  field::TextApplication& application_;
  Wire& wire_;
  Attendants attendants_;
  Composer composer_;
  std::list<Context> contexts_;  ///< the latest first
  Context* focused_ = nullptr;
  bool secret_ = false;
  bool behind_ = false;  ///< the session hasn't seen all keys
  std::array<std::uint64_t, kEditFaults> leftOut_{};
  std::set<std::uint32_t> pressed_;
  std::set<std::uint32_t> consumed_;  ///< of those that are pressed
};

}  // namespace quorvane::ibus
