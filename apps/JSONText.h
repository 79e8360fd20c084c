#pragma once
// Pieces of JSON.

#include <string>
#include <string_view>

#include "apps/Hexadecimal.h"

namespace quorvane {

/// Bytes of others, so that no terminal and no parser takes one for something else.
inline std::string printable(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    const bool plain = code >= 32 && code < 127 && byte != '"' && byte != '\\';
    const std::string hex = hexadecimal(code);
    text += plain ? std::string(1, byte) : "\\u00" + std::string(2 - hex.size(), '0') + hex;
  }
  return text;
}

inline std::string inQuotes(std::string_view plain) {
  return std::string("\"").append(plain) + '"';
}

/// `one` makes the text of each.
template <class All, class One>
std::string arrayOf(const All& all, const One& one) {
  std::string items;
  for (const auto& each : all) items += (items.empty() ? "" : ", ") + one(each);
  return "[" + items + "]";
}

}  // namespace quorvane
