#pragma once

#include <ibus.h>

#include <string_view>

#include "src/base/Text.h"

namespace quorvane::ibus {

/// Floating.
inline IBusText* newText(std::u16string_view text) {
  return ibus_text_new_from_string(toUtf8(text).c_str());
}

}  // namespace quorvane::ibus
