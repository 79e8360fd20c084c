#pragma once
// NSCharacterSet and the case of NSString: the Unicode character database.

#include <string>
#include <string_view>

namespace quorvane {

class CharacterSets {
 public:
  virtual ~CharacterSets() = default;

  // characterIsMember of
  virtual bool decimalDigitCharacterSet(char16_t character) = 0;  ///< category Nd
  virtual bool punctuationCharacterSet(char16_t character) = 0;   ///< categories P*
  virtual bool symbolCharacterSet(char16_t character) = 0;        ///< categories S*
  /// Of no language in particular. The length may change.
  virtual std::u16string lowercaseString(std::u16string_view text) = 0;
};

}  // namespace quorvane
