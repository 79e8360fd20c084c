#pragma once
// How people write shortcuts: `cmd+shift+s`, `option+f5`, `none`. A key is named by what US
// keyboards have printed on it.

#include <string>
#include <string_view>

#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {

/// `none` has no key. Throws std::invalid_argument, with what is known, where it can't be read or
/// would never be matched.
KeyShortcut shortcutOf(FourCharCode command, std::string_view keys);
/// A key without a name is written as `key 93`.
std::string keysOf(const KeyShortcut& shortcut);

}  // namespace quorvane::parameters
