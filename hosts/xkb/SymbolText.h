#pragma once
// Key symbols and the library's UTF-8 as UTF-16 text.

#include <xkbcommon/xkbcommon.h>

#include <string>
#include <string_view>

namespace quorvane::xkb {

/// What is no UTF-8 becomes U+FFFD.
std::u16string fromUtf8(std::string_view utf8);
/// Empty for a symbol that prints nothing.
std::u16string textOf(xkb_keysym_t symbol);

}  // namespace quorvane::xkb
