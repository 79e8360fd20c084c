#pragma once
// Text as Duktape keeps it: each UTF-16 unit, surrogates included, by itself in the manner of
// UTF-8.

#include <string>
#include <string_view>

namespace quorvane {

std::string toScriptText(std::u16string_view text);
/// Takes anything: what is no text at all becomes U+FFFD.
std::u16string fromScriptText(std::string_view bytes);

}  // namespace quorvane
