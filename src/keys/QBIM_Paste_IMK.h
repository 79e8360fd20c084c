#pragma once
// Pressing the paste keys in a client, at the main application's request: it has filled the
// clipboard, which isn't touched here. The keys go by position, whatever the layout.

#include <cstdint>

#include "src/base/Instance.h"

namespace quorvane {

struct PasteState {
  /// The client that the last paste message named; 0: none.
  std::int32_t ToolCRecPtr_QORVSTATUS_returnPid = 0;
};

void Post_Paste_CommandKey(Instance& instance, std::int32_t pid);
void Post_SpecialPaste_CommandKey(Instance& instance, std::int32_t pid);
void Post_PasteKeyEvent(Instance& instance, std::uint16_t modifierWord);
/// Where the chord goes; a process id counts before a serial number, and both 0 is nowhere. 1 where
/// the process id of the message leads there, else the signature looked at last.
std::uint32_t GetEventProcessSerial(Instance& instance, ProcessSerialNumber& psn,
                                    std::int32_t& pid);
/// Nothing where the target is nowhere.
void CGEventPost_Character(Instance& instance, const CGEvent* event, const ProcessSerialNumber& psn,
                           std::int32_t pid);
/// 0 doesn't sleep at all.
void u2sleep(Instance& instance, Microseconds duration);

}  // namespace quorvane
