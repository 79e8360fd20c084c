#pragma once
// Looks at the user's desktop. Changes nothing.

#include "tools/doctor/Facts.h"

namespace quorvane {

/// Takes some seconds where a daemon doesn't answer.
doctor::Facts gatherFacts();

}  // namespace quorvane
