#pragma once
// When keys come: a digit typed in haste belongs to a number, one after a pause may be a choice.

#include "src/base/Instance.h"

namespace quorvane {

struct SessionEventState {
  Seconds LastTimeStampWhenKeyHit{};
  bool SeparateKeyPress = false;  ///< this key came more than 0.5 s after the previous one
  bool followed = false;          ///< the session has seen the key that is under way
};

}  // namespace quorvane
