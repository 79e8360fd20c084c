#include "hosts/ibus/TextField.h"

#include <algorithm>
#include <array>

namespace quorvane::ibus {
namespace {

constexpr std::size_t kMostEarlier = 64;
constexpr unsigned kMostHeld = 32;  ///< keys that an edit waits for a lagging client
constexpr std::size_t kTail = 256;  ///< units before the caret that are compared
constexpr unsigned kMisfits = 2;    ///< so many, and a client isn't trusted with edits any more

constexpr std::array<std::string_view, kEditFaults> kFaultNames{
    "the client doesn't tell its text", "the client hasn't handled earlier keys",
    "somebody else changed the text",   "session and text differ there",
    "it isn't right before the caret",  "the client made something else of earlier ones"};

std::u16string_view tail(std::u16string_view text) {
  return text.substr(text.size() - std::min(text.size(), kTail));
}

bool isChord(const NSEvent& key) {
  constexpr std::uint32_t kChord = NSEventModifierFlagCommand | NSEventModifierFlagControl;
  return (key.modifierFlags & kChord) != 0;
}

bool isPrintable(const NSEvent& key) {
  const char16_t first = key.characters.empty() ? u'\0' : key.characters.front();
  return !isChord(key) && first >= 0x20 && first != 0x7F;
}

bool isLineEnd(const NSEvent& key) {
  return !isChord(key) && (key.characters == u"\r" || key.characters == u"\x03");
}

/// A key that moves the caret or erases. A text field with marked text takes it and does nothing.
bool isControl(const NSEvent& key) {
  return !isChord(key) && !key.characters.empty() && !isPrintable(key) && !isLineEnd(key) &&
         key.characters != u"\t";
}

/// Does the same in any text field.
bool isPredictable(const NSEvent& key) {
  return isPrintable(key) || (!isChord(key) && key.characters == u"\b");
}

CaretText afterKey(const CaretText& text, const NSEvent& key) {
  field::Document document;
  document.setText(text.text);
  document.select(text.selection());
  document.applyKey(key, field::CopiedFor::Person);
  return caretTextOf(document.text(), document.selection());
}

}  // namespace

std::string_view nameOf(EditFault fault) { return kFaultNames[static_cast<std::size_t>(fault)]; }

void TextField::tell(CaretText text) {
  told_ = std::move(text);
  tells_ = true;
}

void TextField::tellNothing() {
  tells_ = false;
  told_ = {};
}

void TextField::forget() {
  tellNothing();
  setText({});
  believe({}, false);
  lags_ = edited_ = false;
  held_ = 0;
  doubt_ = 0;
  way_ = Way::AsTheyCame;
  dropped_.reset();
  agreement_ = {};
  earlier_.clear();
  passed_.reset();
  shown_.clear();
}

Meeting TextField::meet(const NSEvent& key) {
  passed_.reset();
  if (!tells_) {
    earlier_.clear();
    way_ = Way::AsTheyCame;
  }
  const Meeting meeting = tells_ ? compare(key) : Meeting::Agrees;
  edited_ = false;
  if (way_ != Way::PassedOn) passedOn_ = 0;
  lags_ = meeting == Meeting::Lags || doubt_ > 0;
  if (meeting == Meeting::Lags) {
    waits_ = isPending();
    if (waits_ && ++held_ > kMostHeld) drop(EditFault::Lagging);
    return meeting;
  }
  waits_ = false;
  held_ = 0;
  const std::u16string session = session_();
  agreement_ = agreementOf(believed_.before(), session);
  const bool astray = tells_ && !belongTogether(believed_.before(), session);
  return astray ? Meeting::Elsewhere : meeting;
}

/// Keys are handled in their order: what the client has told of is behind it for good. Where it may
/// be as far as at an earlier key, too, nobody knows yet.
Meeting TextField::compare(const NSEvent& key) {
  const std::u16string_view told = tail(told_.before());
  if (!predicted_ && (told.empty() || told_ != believed_)) {
    meetChange();
    return Meeting::Agrees;
  }
  const bool latest = mayBe(told, tail(believed_.before()));
  const auto matches = [told](const auto& text) { return mayBe(told, text); };
  const auto first = std::ranges::find_if(earlier_, matches);
  const bool earlier = first != earlier_.end();
  if (earlier) earlier_.erase(earlier_.begin(), first);
  if (earlier) return Meeting::Lags;
  if (!latest) {
    if (edited_) ++misfits_;
    meetChange();
    return Meeting::Elsewhere;
  }
  earlier_.clear();
  if (doubt_ > 0 && --doubt_ > 0) return Meeting::Lags;
  way_ = Way::AsTheyCame;
  meetExpected(key);
  return Meeting::Agrees;
}

/// The key can go behind what is done to the client.
bool TextField::mayGoBefore(const NSEvent& key) const {
  return isPrintable(key) || wire_.takesKeys();
}

/// Keys that nobody has seen the effect of may still be on their way.
void TextField::meetChange() {
  if (isPending()) drop(EditFault::Changed);
  doubt_ = std::max({doubt_, earlier_.size(), passedOn_});
  if (doubt_ == 0) way_ = Way::AsTheyCame;
  earlier_.clear();
  believe(told_, true);
  restore();
}

void TextField::meetExpected(const NSEvent& key) {
  const auto waiting = editBetween(believed_, wanted());
  believe(told_, true);
  if (!waiting || !mayGoBefore(key)) {
    if (isPending()) drop(EditFault::BehindCaret);
  } else if (const auto fault = faultOf(*waiting)) {
    drop(*fault);
  } else {
    std::u16string before(tail(believed_.before()));
    sendAtKey(*waiting);
    rememberEarlier(std::move(before), false, true);
  }
  restore();
}

void TextField::passUnseen(const NSEvent* key) {
  std::u16string before(tail(believed_.before()));
  const bool predictable = key != nullptr && isPredictable(*key);
  if (isPending()) drop(EditFault::Lagging);
  believe(predictable ? afterKey(believed_, *key) : believed_, predictable && predicted_);
  restore();
  rememberEarlier(std::move(before), true, predictable);
}

void TextField::applyKey(const NSEvent& event, field::CopiedFor whom) {
  if (event.type != NSEventType::KeyDown) return;
  if (whom == field::CopiedFor::Person && markedRange() && isControl(event)) return;
  if (whom == field::CopiedFor::Person) passed_ = event;
  const bool types = isPredictable(event) || isLineEnd(event);
  if (types) return Document::applyKey(event, whom);
  if (whom == field::CopiedFor::Person) return unmark();
  if (const auto key = keyOf(event)) {
    wire_.forward(*key);
    predicted_ = false;
  }
}

bool TextField::settle(const NSEvent& key) {
  std::u16string before(tail(believed_.before()));
  const bool passes = passed_.has_value();
  passed_.reset();
  const bool taken = lags_ ? hold(key, passes) : settleNow(key, passes);
  rememberEarlier(std::move(before), !taken, isPredictable(key));
  showMarked();
  if (!isPending()) agreement_ = agreementOf(believed_.before(), session_());
  return taken;
}

bool TextField::settleNow(const NSEvent& key, bool passes) {
  if (passes) return settlePassed(key);
  if (isPending()) edit(wanted());
  return true;
}

/// It gets its key, as it is, and what is to be done besides waits until it is seen to be as far.
bool TextField::hold(const NSEvent& key, bool passes) {
  if (!passes && !isPending()) return true;
  const bool predictable = isPredictable(key);
  // It would erase what isn't there yet, or nobody knows what it does.
  const bool ends = !predictable || (waits_ && !isPrintable(key));
  if (ends && isPending()) drop(EditFault::Lagging);
  const std::uint64_t before = believed_.before().size();
  believe(predictable ? afterKey(believed_, key) : believed_, predictable && predicted_);
  if (ends) restore();
  agreement_.length += believed_.before().size();
  agreement_.length -= std::min(agreement_.length, before);
  return false;
}

bool TextField::settlePassed(const NSEvent& key) {
  CaretText goal = wanted();
  const bool predictable = isPredictable(key);
  const CaretText untouched = predictable ? afterKey(believed_, key) : believed_;
  if (goal == untouched) {
    believe(untouched, predictable && predicted_);
    return false;
  }
  if (isPrintable(key) && edit(goal)) return true;
  if (isLineEnd(key) && goal.before().ends_with(u'\n')) {
    goal.text.erase(goal.caret - 1, 1);
    goal.anchor = --goal.caret;
  }
  if (!predictable && goal != believed_ && mayGoBefore(key)) edit(goal);
  if (predictable && !isPrintable(key)) drop(EditFault::BehindCaret);
  believe(predictable ? untouched : believed_, predictable && predicted_);
  restore();
  return false;
}

bool TextField::passOn(const Key& key, const NSEvent* event) {
  const bool inserts = way_ == Way::Inserted && event != nullptr && isPrintable(*event);
  if (!inserts && !wire_.takesKeys()) way_ = Way::AsTheyCame;
  if (way_ == Way::AsTheyCame) return false;
  if (inserts) {
    wire_.commit(event->characters);
  } else {
    wire_.passOn(key);
    way_ = Way::PassedOn;
    ++passedOn_;
  }
  return true;
}

void TextField::settleBetweenKeys(const std::function<bool()>& isQuiet) {
  const auto waiting = editBetween(believed_, wanted());
  const bool inserts = waiting && waiting->deleted == 0 && !waiting->inserted.empty();
  if (inserts && predicted_ && !lags_ && isQuiet()) send(*waiting);
  showMarked();
}

/// The text without what is marked.
CaretText TextField::wanted() const {
  const auto marked = markedRange();
  if (!marked) return caretTextOf(text(), selection());
  std::u16string plain = text();
  plain.erase(marked->location, marked->length);
  return caretTextOf(std::move(plain), {marked->location, 0});
}

bool TextField::edit(const CaretText& goal) {
  const auto wish = editBetween(believed_, goal);
  const auto fault = wish ? faultOf(*wish) : EditFault::BehindCaret;
  if (fault) {
    drop(*fault);
    return false;
  }
  sendAtKey(*wish);
  return true;
}

std::optional<EditFault> TextField::faultOf(const Edit& edit) const {
  if (edit.deleted == 0) return std::nullopt;
  if (!tells_) return EditFault::Untold;
  if (misfits_ >= kMisfits) return EditFault::Distrusted;
  if (believed_.caret != believed_.anchor) return EditFault::BehindCaret;
  const bool agreed = mayReplace(believed_.before(), believed_.caret - edit.deleted, agreement_);
  return agreed ? std::nullopt : std::optional(EditFault::Disagreement);
}

/// The client has handled all keys before.
void TextField::sendAtKey(const Edit& edit) {
  send(edit);
  if (!edit.isNothing() && way_ == Way::AsTheyCame) way_ = Way::Inserted;
}

void TextField::send(const Edit& edit) {
  if (edit.isNothing()) return;
  if (!shown_.empty()) wire_.showPreedit(shown_ = {}, shownCaret_ = 0);
  const std::uint64_t start = believed_.selection().location - edit.deleted;
  const std::u16string_view old = std::u16string_view(believed_.text).substr(start, edit.deleted);
  if (edit.deleted != 0) wire_.deleteBefore(codePointsIn(old));
  if (!edit.inserted.empty()) wire_.commit(edit.inserted);
  edited_ = edit.deleted != 0;
  std::u16string text = believed_.text;
  text.replace(start, edit.deleted + believed_.selection().length, edit.inserted);
  believe(caretTextOf(std::move(text), {start + edit.inserted.size(), 0}), predicted_);
}

void TextField::drop(EditFault fault) {
  dropped_ = fault;
  restore();
}

void TextField::believe(CaretText text, bool predicted) {
  believed_ = std::move(text);
  predicted_ = predicted;
}

/// What is marked stays so, at the caret.
void TextField::restore() {
  std::u16string marked;
  NSRange inside;
  if (const auto range = markedRange()) {
    marked = text().substr(range->location, range->length);
    inside = {selection().location - range->location, selection().length};
  }
  setText(believed_.text);
  select(believed_.selection());
  if (!marked.empty()) Document::setMarkedText(marked, inside, {NSNotFound, NSNotFound});
}

void TextField::showMarked() {
  std::u16string marked;
  std::uint32_t caret = 0;
  if (const auto range = markedRange()) {
    marked = text().substr(range->location, range->length);
    const std::uint64_t end = selection().location + selection().length - range->location;
    caret = codePointsIn(std::u16string_view(marked).substr(0, end));
  }
  if (marked == shown_ && caret == shownCaret_) return;
  wire_.showPreedit(marked, caret);
  shown_ = std::move(marked);
  shownCaret_ = caret;
}

/// What a key has left as it was tells nothing of how far the client is, unless nobody knows what
/// it does.
void TextField::rememberEarlier(std::u16string before, bool passed, bool predictable) {
  const std::u16string_view now = tail(believed_.before());
  const bool same = before == now;
  if (!same || (passed && !predicted_)) earlier_.push_back(std::move(before));
  if (!same && passed && !predictable) earlier_.emplace_back(now);
  while (earlier_.size() > kMostEarlier) earlier_.pop_front();
}

}  // namespace quorvane::ibus
