#pragma once
// The input method on the memory host, started as `main` starts it and ready for keys; and the law
// that holds at each key, whatever the world does: it is passed on or consumed exactly once, no
// text outgrows its bounds, no busy flag is left, nothing stays attached that was for one use.

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "tools/support/StartedInputMethod.h"

namespace quorvane::fuzz {

class Subject : public test::StartedInputMethod {
 public:
  Subject();
  Subject(const Subject&) = delete;
  Subject& operator=(const Subject&) = delete;

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
  struct Sight;
  Sight look();
  void checkDelivered(const NSEvent& event, bool consumed, const Sight& before);
  void checkDocument(const NSEvent& event, bool consumed, const Sight& before);
  void checkToolRecord(const Sight& before);
  void checkSessions();

  bool disturbed_ = false;
  int reports_ = 0;  ///< of the event under way
  field::Outcome outcome_ = field::Outcome::PassedOn;
};

}  // namespace quorvane::fuzz
