#include "hosts/json/JSONPlace.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <optional>

namespace quorvane {
namespace {

std::optional<std::size_t> placeOfBadEncoding(std::string_view text) {
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    UChar32 character = 0;
    U8_NEXT(bytes, at, text.size(), character);
    if (character < 0) return start;
  }
  return {};
}

}  // namespace

JSONPlace placeInText(std::string_view text, std::size_t at) {
  const std::string_view before = text.substr(0, at);
  const auto lines = std::ranges::count(before, '\n');
  const std::size_t lineStart = before.rfind('\n') + 1;  // 0 where there is none
  return {static_cast<std::uint64_t>(lines) + 1, before.size() - lineStart + 1};
}

std::size_t placeOfBadText(std::string_view text) {
  if (const auto at = placeOfBadEncoding(text)) return *at;
  std::size_t opened = 0;
  bool inside = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char character = text[at];
    if (character == '"') {
      inside = !inside;
      opened = at;
    } else if (inside && character == '\\') {
      ++at;
    } else if (inside && static_cast<unsigned char>(character) < ' ') {
      return at;
    }
  }
  if (inside) return opened;
  const std::size_t last = text.find_last_not_of(" \t\r\n");
  return last == std::string_view::npos ? 0 : last;
}

}  // namespace quorvane
