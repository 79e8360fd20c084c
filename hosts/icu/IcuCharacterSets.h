#pragma once
// Character classes and case by ICU, shared by every host.

#include "platform/CharacterSets.h"

namespace quorvane {

class IcuCharacterSets final : public CharacterSets {
 public:
  bool decimalDigitCharacterSet(char16_t character) override;
  bool punctuationCharacterSet(char16_t character) override;
  bool symbolCharacterSet(char16_t character) override;
  /// ASCII costs no more than its copy.
  std::u16string lowercaseString(std::u16string_view text) override;
};

}  // namespace quorvane
