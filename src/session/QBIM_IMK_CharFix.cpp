#include "src/session/QBIM_IMK_CharFix.h"

#include "src/bridge/BIM_str.h"
#include "src/session/QBIM_IMK_TextBuffer.h"
#include "src/session/QuorvaneInputController_Commit.h"

namespace quorvane {

void Send_Char_Fix(Instance& instance, const std::uint8_t* byteAddress, Utf16Units replaceLength) {
  const auto text = textFromRoman(instance, {reinterpret_cast<const char*>(byteAddress), 1});
  if (!text) return;
  // A key is never lost: where there is nothing to replace it stands as it is.
  if (!Do_nsstring_commit_to_composition(instance, *text, replaceLength)) {
    Do_nsstring_commit_to_composition(instance, *text, Utf16Units{0});
  }
}

void DO_Fix_Commit_Composition(Instance& instance, BIMSessionRec* session, std::uint8_t keyByte) {
  BIMHandleInput(instance, session, keyByte, ByteOrigin::Replacement);
  Do_commit_to_composition(instance, &keyByte, 1, Utf16Units{1});
}

}  // namespace quorvane
