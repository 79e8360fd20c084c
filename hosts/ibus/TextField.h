#pragma once
// A text field of another process. What the input method does to it is done to a copy first; at the
// end of each key the smallest edit that makes the one of the other goes to the client, or none: a
// client that isn't seen to hold what is believed of it gets nothing but its own keys.
//
//   told      what the client has told of its text, right before a key
//   believed  that, and what keys and edits since must have made of it
//   text()    that, and what the input method has done to it

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "hosts/field/Document.h"
#include "hosts/ibus/SurroundingText.h"
#include "hosts/ibus/Wire.h"

namespace quorvane::ibus {

/// How a client stands to what is believed of it.
enum class Meeting : std::uint8_t {
  Agrees,
  Lags,      ///< it may not have handled all of its keys
  Elsewhere  ///< its caret went elsewhere, or somebody else changed its text
};

/// Why an edit was left out.
enum class EditFault : std::uint8_t {
  Untold,        ///< the client doesn't tell its text
  Lagging,       ///< it hasn't handled earlier keys
  Changed,       ///< somebody else changed its text
  Disagreement,  ///< session and text differ where it would be
  BehindCaret,   ///< it isn't right before the caret
  Distrusted     ///< the client made something else of earlier ones
};
inline constexpr std::size_t kEditFaults = 6;
/// In words, for a person.
std::string_view nameOf(EditFault fault);

class TextField final : public field::Document {
 public:
  /// What the session of this field has before its caret, as a document shows it.
  using Session = std::function<std::u16string()>;

  /// `wire` and what `session` looks at outlive this.
  TextField(Wire& wire, Session session) : wire_(wire), session_(std::move(session)) {}

  // What the client says.

  void tell(CaretText text);
  /// It tells no more.
  void tellNothing();
  [[nodiscard]] bool tells() const { return tells_; }
  /// Nothing of its text is kept.
  void forget();

  // A key, in this order.

  /// Right before it: what is still to be done to the client is done now, or dropped.
  Meeting meet(const NSEvent& key);
  /// It may not have handled all of its keys: edits wait.
  [[nodiscard]] bool lags() const { return lags_; }
  /// The input method doesn't get it. Null: nobody can say what it does.
  void passUnseen(const NSEvent* key);
  /// The input method has had it. False: the client must get it now.
  bool settle(const NSEvent& key);

  /// The key goes to the client, behind what has been done to it. False: as it came.
  bool passOn(const Key& key, const NSEvent* event);

  /// Between keys: what goes to the caret goes there once that is quiet, the rest waits for the
  /// next key.
  void settleBetweenKeys(const std::function<bool()>& isQuiet);
  /// Of a key that was passed on, or of one that the input method has pressed.
  void applyKey(const NSEvent& event, field::CopiedFor whom) override;

  /// Why an edit was left out since this was last asked, so that the session doesn't say what the
  /// client holds; none: none was.
  std::optional<EditFault> takeDropped() { return std::exchange(dropped_, std::nullopt); }

 private:
  [[nodiscard]] CaretText wanted() const;
  [[nodiscard]] bool isPending() const { return wanted() != believed_; }
  Meeting compare(const NSEvent& key);
  void meetChange();
  void meetExpected(const NSEvent& key);
  [[nodiscard]] bool mayGoBefore(const NSEvent& key) const;
  bool settleNow(const NSEvent& key, bool passes);
  bool settlePassed(const NSEvent& key);
  bool hold(const NSEvent& key, bool passes);
  bool edit(const CaretText& goal);
  [[nodiscard]] std::optional<EditFault> faultOf(const Edit& edit) const;
  void sendAtKey(const Edit& edit);
  void send(const Edit& edit);
  void drop(EditFault fault);
  void believe(CaretText text, bool predicted);
  void restore();
  void showMarked();
  void rememberEarlier(std::u16string before, bool passed, bool predictable);

  /// How keys come to the client. What is done to it comes as signals, which one that waits for the
  /// answer to each key handles after its next key: so keys go the same way until it is seen to be
  /// as far. A key that was passed on overtakes nothing, but what is inserted later overtakes it.
  enum class Way : std::uint8_t { AsTheyCame, Inserted, PassedOn };

  Wire& wire_;
  Session session_;
  bool tells_ = false;
  CaretText told_;
  CaretText believed_;
  bool predicted_ = false;  ///< `believed_` is right unless somebody else has done something
  std::size_t doubt_ = 0;   ///< keys of unknown effect that may still be on their way
  bool lags_ = false;       ///< at the last key
  Way way_ = Way::AsTheyCame;
  std::size_t passedOn_ = 0;            ///< keys, since the way is that
  bool waits_ = false;                  ///< an edit does, since before the key under way
  unsigned held_ = 0;                   ///< keys since an edit began to wait for that
  bool edited_ = false;                 ///< by us, at the last key
  unsigned misfits_ = 0;                ///< edits that it made something else of
  Agreement agreement_;                 ///< of `believed_` and the session
  std::deque<std::u16string> earlier_;  ///< ends of what a lagging client may still have
  std::optional<NSEvent> passed_;       ///< the key under way, where it was passed on
  std::u16string shown_;                ///< as preedit
  std::uint32_t shownCaret_ = 0;
  std::optional<EditFault> dropped_;
};

}  // namespace quorvane::ibus
