#pragma once
// The text of a document, with each UTF-16 unit also as the byte that it would be in a session's
// text, so that what is known of typed words holds for it, too.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::checker {

struct DocumentText {
  std::u16string units;
  std::vector<std::uint8_t> bytes;  ///< as many
};

DocumentText documentTextOf(std::u16string units);
/// Empty where the bytes are no UTF-8.
std::optional<DocumentText> readDocumentText(std::string_view utf8);

/// ASCII, and each other byte as U+FFFD.
std::u16string widenedAscii(std::string_view ascii);

}  // namespace quorvane::checker
