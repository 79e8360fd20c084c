#pragma once
// The first stop of every key: the hand-shake by which the clipboard is put back as it was, and the
// keys that a window of the main application may want.
//
//   field 27   0 idle    1 a clipboard restore is armed    2 to be restored

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// 1: a popup used the key up.
std::int32_t RestoreClipboard(Instance& instance, BIMSessionRec* session, std::uint32_t modifiers,
                              std::uint8_t keyByte);
/// 1: a command key has turned an armed restore into one to be carried out.
std::int32_t Reset_Clip(Instance& instance, std::uint32_t modifiers);

}  // namespace quorvane
