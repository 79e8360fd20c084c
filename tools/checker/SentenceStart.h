#pragma once
// Whether a sentence starts with the next letter, told with every scan.

#include "tools/checker/TextRecord.h"

namespace quorvane::checker {

/// True where the key just typed is white space straight behind a full stop, a question or an
/// exclamation mark; closing quotes and brackets may stand between. Not at the mark itself, since
/// more may follow, as in "3.5"; nor behind "e.g.".
bool startsSentence(const TextRecord& record);

}  // namespace quorvane::checker
