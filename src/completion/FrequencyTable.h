#pragma once
// What `frequency_and_ipa.json` says, in its order:
//
//     { "word": { "frequency": 12 or "12", "translation": ["line", ...], "ipa": "..." }, ... }
//
// Whatever is missing or of another type counts as frequency 0, no translation, no symbol. A word's
// or a member's later occurrence replaces the earlier one whole.

#include <string>
#include <vector>

#include "src/completion/JSONShape.h"
#include "src/completion/TextPile.h"

namespace quorvane {

struct FrequencyTable {
  TextPile words;
  std::vector<std::int32_t> frequencies;
  /// Of each word a TextList: its phonetic symbol, then the lines of its translation. Empty where
  /// it has neither.
  TextPile annotations;
};

class FrequencyTableReader : public JSONShape {
 public:
  explicit FrequencyTableReader(FrequencyTable& table) : JSONShape("{{["), table_(table) {}

 private:
  enum class Member { Other, Frequency, Translation, Ipa };

  void keyAt(std::size_t depth, std::string_view text) override;
  void stringAt(std::size_t depth, std::string_view text) override;
  void integerAt(std::size_t depth, std::int64_t number) override;
  void realAt(std::size_t depth, double number) override;
  void leave(std::size_t depth) override;

  void finishWord();
  void startMember(std::string_view name);

  FrequencyTable& table_;
  bool inWord_ = false;
  Member member_ = Member::Other;
  std::int32_t frequency_ = 0;
  std::string ipa_;
  std::string translation_;  ///< a TextList
};

/// -[NSString intValue]: white space, a sign, digits; cut off at both ends of the range. 0 where
/// there is no number.
std::int32_t intValue(std::string_view text);
/// -[NSNumber intValue]: truncated toward zero, cut off at both ends of the range.
std::int32_t intValue(double number);

}  // namespace quorvane
