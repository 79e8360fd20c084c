#pragma once
// What is to change in a scanned text, and the message that changes the document likewise.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/checker/TextRecord.h"
#include "tools/checker/WordChoice.h"

namespace quorvane::checker {

inline constexpr std::int32_t kMessageInput = 202;

struct Fix {
  std::string word;
  std::string replacement;
  /// Of the characters before the caret, the key that ended the word included: the message is
  /// handled once that key has been inserted.
  std::uint32_t count = 0;
  std::string text;  ///< UTF-8, in the place of those characters; empty: nothing is sent
  TextRecord corrected;
};

/// What stands from `start` to `end` becomes `text`, in which a return is a line feed; what follows
/// it up to the cursor stays. A session text without room begins anew. Empty where nobody knows how
/// many characters are to go, or where the session can't follow.
std::optional<Fix> writtenOver(const TextRecord& record, std::size_t start, std::size_t end,
                               std::u16string_view text);

/// A text that has just been typed into.
struct Typing {
  const TextRecord& record;
  std::size_t vouchedFrom = 0;
  SessionKey session{};
};

/// Empty where the key just typed ends no word, or none that is surely another one, or one that
/// begins before `vouchedFrom`.
std::optional<Fix> findFix(const Typing& typing, WordChoice& choice);

/// One for each suggestion that the word may be replaced by, the best first. Empty where `findFix`
/// would look no further, and where a list of them has no written form.
std::vector<Fix> findOffers(const Typing& typing, WordChoice& choice);

/// Types an ASCII character that has reached neither the session nor the document. A session text
/// that has no room for it begins anew.
Fix typedCharacter(const TextRecord& record, std::uint8_t character);

/// The count, 4 bytes big-endian, and the text.
std::vector<std::uint8_t> messagePayload(const Fix& fix);

}  // namespace quorvane::checker
