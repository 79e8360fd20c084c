#pragma once
// UTF-8 from a file, as text.

#include <span>
#include <string>
#include <string_view>

#include "platform/TextEncoding.h"

namespace quorvane {

/// Empty where it isn't UTF-8.
inline std::u16string fromUtf8(TextEncoding& encoding, std::string_view utf8) {
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(utf8.data()), utf8.size());
  return encoding.initWithData(bytes, NSStringEncoding::UTF8).value_or(std::u16string());
}

}  // namespace quorvane
