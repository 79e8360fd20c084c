#pragma once
// The interactive text record (segment 893).
//
//     0        4        8                      392   393
//     +--------+--------+----------------------+-----+--
//     | cursor | length | text, 384 bytes      | key |
//     +--------+--------+----------------------+-----+--
//      big-endian words  Mac OS Roman

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quorvane::checker {

inline constexpr std::size_t kTextRecordSize = 400;
inline constexpr std::size_t kTextCapacity = 384;

struct TextRecord {
  std::vector<std::uint8_t> text;  ///< as far as the cursor
  std::size_t length = 0;          ///< of the whole text, what lies behind the cursor included
  std::uint8_t key = 0;
  /// Smart characters are switched on: a byte from 208 to 213 is a dash or a quote. Otherwise it is
  /// the beginning of some letter's UTF-8 form.
  bool smartCharacters = false;
};

/// Empty where the bytes are no text record: too short, or numbers out of bounds.
std::optional<TextRecord> decodeTextRecord(std::span<const std::uint8_t> bytes);

/// Writes cursor, length, text and a zero byte behind it, but not the key, which is the input
/// method's. False, with nothing written, where the text doesn't fit.
bool encodeTextRecord(const TextRecord& record, std::span<std::uint8_t> bytes);

}  // namespace quorvane::checker
