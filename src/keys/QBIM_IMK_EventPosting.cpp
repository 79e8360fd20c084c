#include "src/keys/QBIM_IMK_EventPosting.h"

#include "src/base/Log.h"
#include "src/base/Modifiers.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/keys/AsciiToKeyCode.h"
#include "src/keys/qorvHIDkeys.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kAsciiEnd = 0x80;
constexpr Microseconds kPauseAfterPost{10};
constexpr Microseconds kPauseAroundCommand{100};

/// Both switches hold for the whole process, so that each event turns them around itself.
class LocalEventsInhibited {
 public:
  explicit LocalEventsInhibited(EventPosting& posting) : posting_(posting) {
    posting_.CGInhibitLocalEvents(true);
    posting_.CGEnableEventStateCombining(false);
  }
  ~LocalEventsInhibited() {
    posting_.CGInhibitLocalEvents(false);
    posting_.CGEnableEventStateCombining(true);
  }
  LocalEventsInhibited(const LocalEventsInhibited&) = delete;
  LocalEventsInhibited& operator=(const LocalEventsInhibited&) = delete;

 private:
  EventPosting& posting_;
};

void postKey(EventPosting& posting, const ProcessSerialNumber& psn, std::uint16_t keyCode,
             std::uint16_t modifierWord, bool keyDown) {
  CGEventSourceRef source = posting.CGEventSourceCreate(kCGEventSourceStateCombinedSessionState);
  CGEventRef event = posting.CGEventCreateKeyboardEvent(source.get(), keyCode, keyDown);
  setEventFlags(posting, event.get(), modifierWord);
  posting.CGEventPostToPSN(psn, event.get());
  event.reset();
  source.reset();
}

void pressCommandInSession(EventPosting& posting) {
  CGEventRef down = posting.CGEventCreateKeyboardEvent(nullptr, kVK_Command, true);
  CGEventRef up = posting.CGEventCreateKeyboardEvent(nullptr, kVK_Command, false);
  posting.CGEventPost(kCGHIDEventTap, down.get());
  posting.CGEventPost(kCGHIDEventTap, up.get());
  down.reset();
  up.reset();
}

}  // namespace

std::uint64_t eventFlags(std::uint16_t modifierWord) { return flagsOfModifiers(modifierWord); }

void setEventFlags(EventPosting& posting, CGEvent* event, std::uint16_t modifierWord) {
  const std::uint64_t flags = eventFlags(modifierWord);
  if (event != nullptr && flags != 0) posting.CGEventSetFlags(event, flags);
}

void Do_POST_CGEVENT(Instance& instance, CGEventSource* /*source*/, const ProcessSerialNumber& psn,
                     std::uint16_t keyCode, std::uint16_t modifierWord, std::uint32_t keyDown) {
  EventPosting& posting = instance.platform().eventPosting;
  {
    const LocalEventsInhibited inhibited(posting);
    postKey(posting, psn, keyCode, modifierWord, (keyDown & 0xFF) != 0);
  }
  instance.platform().clock.usleep(kPauseAfterPost);
}

void Do_FULL_POST_CGEVENT(Instance& instance, std::uint16_t keyCode, std::uint16_t modifierWord) {
  ProcessSerialNumber psn;
  Get_FrontProcessSerial(instance, psn);
  Do_POST_CGEVENT(instance, nullptr, psn, keyCode, modifierWord, 1);
  Do_POST_CGEVENT(instance, nullptr, psn, keyCode, modifierWord, 0);
}

std::int32_t Post_KeyEvent(Instance& instance, std::uint16_t modifierWord,
                           std::uint16_t character) {
  if (character == 0) return modifierWord;
  const std::uint16_t keyCode = AsciiToKeyCode(instance, character);
  ProcessSerialNumber psn;
  Get_FrontProcessSerial(instance, psn);
  MyPostModifierKeys(modifierWord, 1);
  Do_FULL_POST_CGEVENT(instance, keyCode, modifierWord);
  return MyPostModifierKeys(modifierWord, 0);
}

std::int32_t Post_Key_Event(Instance& instance, std::uint16_t character) {
  return Post_KeyEvent(instance, 0, character);
}

void PostCommandKey(Instance& instance, std::uint16_t character) {
  Do_FULL_POST_CGEVENT(instance, AsciiToKeyCode(instance, character), cmdKey);
  ++instance.state<EventPostingState>().CommandKeyCount;
  Wake_up_front(instance);
}

std::int32_t DO_FIX_CHAR(Instance& instance, BIMSessionRec* /*session*/, std::uint16_t character) {
  std::uint16_t modifierWord = 0;
  const std::uint16_t keyCode = ComposeEventMessage(instance, character, &modifierWord);
  ProcessSerialNumber psn;
  // Beyond ASCII no key is ever found, and the event goes out without one.
  const bool hasNoKey = character < kAsciiEnd && keyCode == kNoKeyCode;
  if (hasNoKey || Get_FrontProcessSerial(instance, psn) == 0) return 0;
  Post_KeyEvent(instance, modifierWord, character);
  return 1;
}

std::int32_t DO_FIX_CHAR_NO_MODIFIERS(Instance& instance, BIMSessionRec* /*session*/,
                                      std::uint16_t character) {
  EventPosting& posting = instance.platform().eventPosting;
  CGEventRef event = posting.CGEventCreateKeyboardEvent(nullptr, 0, true);
  const char16_t unit = character;
  if (event) posting.CGEventKeyboardSetUnicodeString(event.get(), {&unit, 1});
  ProcessSerialNumber psn;
  Get_FrontProcessSerial(instance, psn);
  posting.CGEventPostToPSN(psn, event.get());
  event.reset();
  return 1;
}

void Wake_up_front(Instance& instance) {
  ProcessManager& manager = instance.platform().processManager;
  ProcessSerialNumber psn;
  manager.GetFrontProcess(psn);
  manager.WakeUpProcess(psn);
}

std::int32_t MyPostModifierKeys(std::uint16_t /*modifierWord*/, std::uint32_t /*press*/) {
  return 0;
}

void Send_Marker_Key() {}

void do_PREP_QorvMain_Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t /*commandID*/) {
  EventPosting& posting = instance.platform().eventPosting;
  Clock& clock = instance.platform().clock;
  clock.usleep(kPauseAroundCommand);
  posting.CGEnableEventStateCombining(false);
  {
    const LocalEventsInhibited inhibited(posting);
    HID_PressRelease_VirtualKey(instance, kVK_Command);
    pressCommandInSession(posting);
  }
  clock.usleep(kPauseAroundCommand);
}

std::int32_t IsKeyDown(Instance& instance, std::uint16_t keyCode) {
  KeyMap keys{};
  instance.platform().carbonEvents.GetKeys(keys);
  const std::size_t byte = keyCode >> 3;
  return byte < keys.size() ? (keys[byte] >> (keyCode & 7)) & 1 : 0;
}

std::int32_t IsShiftKeyDown(Instance& instance) { return IsKeyDown(instance, kVK_Shift); }

void Post_MouseMovedEvent(Instance& instance) {
  EventPosting& posting = instance.platform().eventPosting;
  CGEventRef pointer = posting.CGEventCreate(nullptr);
  const NSPoint location = posting.CGEventGetLocation(pointer.get());
  pointer.reset();
  CGEventRef moved = posting.CGEventCreateMouseEvent(nullptr, CGEventType::MouseMoved, location, 0);
  posting.CGEventPost(kCGHIDEventTap, moved.get());
  moved.reset();
}

}  // namespace quorvane
