#pragma once
// The input method on the memory host, started as `main` starts it and ready for keys; and the law
// that holds at each event, typed or posted, whatever the world does: it is passed on or consumed
// exactly once, after the one before it is over; what is passed on does what it does in any
// document; what is consumed has a taker; no text outgrows its bounds, no busy flag is left,
// nothing stays attached that was for one use.

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "tests/support/StartedInputMethod.h"

namespace quorvane::fuzz {

class Subject : public test::StartedInputMethod {
 public:
  explicit Subject(std::span<const std::string_view> words = {});
  ~Subject();

  /// Key down and key up.
  void press(NSEvent key, const field::Delivery& how = {});
  /// Any other event.
  void deliver(const NSEvent& event, const field::Delivery& how = {});
  /// The part of the law that holds between events.
  void checkLaw();
  /// The main application or the system did something meanwhile: what stands in the tool record
  /// need not be the input method's doing.
  void disturb() { disturbed_ = true; }
  /// The input method was told to quit.
  [[nodiscard]] bool ended() const { return host.application.exitStatus.has_value(); }

  std::array<field::Document*, 3> documents{&document, &host.text.addDocument(),
                                            &host.text.addDocument()};

 private:
  /// What an event is judged by, as it stood before.
  struct Sight;
  /// Stands before the controller.
  class Gate;

  [[nodiscard]] Sight look();
  void judge(const field::EventReport& report);
  void judgePosted(const NSEvent& event);
  void checkTaker(const NSEvent& event, bool consumed, bool composing);
  void checkDocument(const NSEvent& event, bool consumed);
  void checkToolRecord();
  std::u16string afterPassing(const NSEvent& event);
  [[nodiscard]] bool isReplaced(const NSEvent& event) const;

  std::unique_ptr<Sight> before_;
  std::unique_ptr<Gate> gate_;
  bool disturbed_ = false;
  int reports_ = 0;  ///< of the event that is delivered
  field::Outcome outcome_ = field::Outcome::PassedOn;
  std::u16string owed_;      ///< a capital that was pressed in place of a letter and must come back
  bool owedSurely_ = false;  ///< false: completion may have taken the letter itself
  std::size_t thrown_ = 0;   ///< events, by completion
};

}  // namespace quorvane::fuzz
