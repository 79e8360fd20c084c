#pragma once
// The way into the document: text into the last client, or parked behind a harmless key press until
// an event brings a client along.

#include <optional>
#include <string>
#include <vector>

#include "src/base/Instance.h"

namespace quorvane {

/// The buffers of the one controller that does the work, and what is parked.
struct CommitState {
  std::u16string _composedBuffer;
  std::u16string _originalBuffer;
  std::int64_t _insertionIndex = 0;

  std::optional<std::u16string> stringbuffer;  ///< parked by the string path
  /// Parked by the byte path: UTF-8 and a terminator.
  std::vector<std::uint8_t> stringbufferHandle;
  Utf16Units ORIGINALREPLACE;             ///< to replace with the parked text
  IMKTextInput* commit_sender = nullptr;  ///< takes direct commits; once set never cleared
};

/// The client takes direct commits from now on, and what is parked goes to it.
void commitParked(Instance& instance, IMKTextInput& sender);
/// String path: direct where a client has been seen, parked otherwise. False: there aren't so many
/// characters before the caret, and nothing is inserted.
bool Do_nsstring_commit_to_composition(Instance& instance, const std::u16string& text,
                                       Utf16Units replaceLength);
/// Byte path: always parks. The bytes are UTF-8.
void Do_commit_to_composition(Instance& instance, const std::uint8_t* bytes, std::uint32_t length,
                              Utf16Units originalReplace);
void WakeUpFront(Instance& instance);

}  // namespace quorvane
