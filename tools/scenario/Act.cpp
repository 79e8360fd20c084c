// Statements that act: the start, keys and focus, messages, time, the main application's coming and
// going, and commands that no key reaches.

#include "src/bridge/ToolCalls.h"
#include "src/menu/OpeningRoute.h"
#include "src/session/QBIM_IMK_CharFix.h"
#include "src/session/QuorvaneInputController.h"
#include "src/session/QuorvaneInputController_Commit.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

void start(World& world, const Arguments& /*is*/) { world.start({}); }
void startWith(World& world, const Arguments& is) {
  std::vector<std::string> arguments;
  for (const Argument& argument : is) arguments.push_back(toBytes(argument.text));
  world.start(arguments);
}
void beginAgain(World& /*world*/, const Arguments& /*is*/) {}

// Keys.

NSEvent keyEvent(World& world, NSEventType type, const Keystroke& stroke) {
  keyboard::Keyboard& keyboard = world.host.queue.keyboard();
  NSEvent event;
  event.type = type;
  event.modifierFlags = stroke.modifierFlags;
  event.characters = toUtf16({stroke.character});
  if (const auto key = keyboard.keyForCharacter(stroke.character)) {
    event.keyCode = key->keyCode;
    if (key->shift) event.modifierFlags |= NSEventModifierFlagShift;
    if (key->function) event.modifierFlags |= NSEventModifierFlagFunction;
    event.characters = keyboard.charactersForKey(event.keyCode, event.modifierFlags);
  }
  return event;
}

// Down and up; only the outcome of the down counts.
void pressAndRelease(World& world, const Keystroke& stroke, const field::Delivery& how = {}) {
  world.deliver(keyEvent(world, NSEventType::KeyDown, stroke), how);
  world.deliver(keyEvent(world, NSEventType::KeyUp, stroke), how);
  world.outcomes.pop_back();
}

void press(World& world, const Arguments& is) {
  world.outcomes.clear();
  for (const Keystroke& stroke : is[0].keys) pressAndRelease(world, stroke);
}
void pressWithoutRecord(World& world, const Arguments& is) {
  world.outcomes.clear();
  pressAndRelease(world, is[0].key, {.withEventRef = false, .repeat = false});
}
void pressKeyCode(World& world, const Arguments& is) {
  world.outcomes.clear();
  NSEvent event;
  event.keyCode = static_cast<std::uint16_t>(is[0].number);
  event.characters = toUtf16(is[1].text);
  if (is.size() > 2) event.modifierFlags = is[2].key.modifierFlags;
  world.deliver(event);
}
void deliverOne(World& world, NSEventType type, const Keystroke& stroke, bool repeat = false) {
  world.outcomes.clear();
  world.deliver(keyEvent(world, type, stroke), {.withEventRef = true, .repeat = repeat});
}
void keyDown(World& world, const Arguments& is) {
  deliverOne(world, NSEventType::KeyDown, is[0].key);
}
void keyRepeat(World& world, const Arguments& is) {
  deliverOne(world, NSEventType::KeyDown, is[0].key, true);
}
void keyUp(World& world, const Arguments& is) { deliverOne(world, NSEventType::KeyUp, is[0].key); }
void changeModifiers(World& world, std::uint32_t flags) {
  NSEvent event;
  event.type = NSEventType::FlagsChanged;
  event.modifierFlags = flags;
  world.deliver(event);
}
void modifiers(World& world, const Arguments& is) {
  world.outcomes.clear();
  changeModifiers(world, is[0].key.modifierFlags);
}
void tap(World& world, const Arguments& is) {
  modifiers(world, is);
  changeModifiers(world, 0);
}
void click(World& world, const Arguments& is) {
  world.outcomes = {world.host.text.click(static_cast<std::uint64_t>(is[0].number))};
  world.settle();
}

// Focus.

void focus(World& world, const Arguments& is) {
  world.host.text.focus(&world.document(is[0].word));
  world.settle();
}
void leave(World& world, const Arguments& /*is*/) {
  world.host.text.focus(nullptr);
  world.settle();
}
void activate(World& world, const Arguments& is) {
  world.controller.activateServer(&world.host.text.clientOf(world.document(is[0].word)));
  world.settle();
}
void deactivate(World& world, const Arguments& is) {
  world.controller.deactivateServer(&world.host.text.clientOf(world.document(is[0].word)));
  world.settle();
}
void closeDocument(World& world, const Arguments& is) { world.document(is[0].word).close(); }
void endController(World& world, const Arguments& /*is*/) {
  Get_QuorvaneInputController(world.instance).dealloc();
}
void endConnection(World& world, const Arguments& /*is*/) {
  Get_QuorvaneInputController(world.instance).connectionDidDie();
}

// Messages to the own port.

void sent(World& world, bool served) {
  if (!served) world.expect(false, "a message port of the input method", "none");
  world.settle();
}
void post(World& world, std::uint32_t id, std::optional<CFData> data) {
  auto& application = world.host.mainApplication;
  sent(world, application.sendMessage(static_cast<std::int32_t>(id), std::move(data)));
}
void message(World& world, const Arguments& is) { post(world, is[0].u32(), std::nullopt); }
void messageWithBytes(World& world, const Arguments& is) { post(world, is[0].u32(), is[1].bytes); }
void messageWithNumber(World& world, const Arguments& is) {
  CFData data;
  for (int shift = 24; shift >= 0; shift -= 8) {
    data.push_back(static_cast<std::uint8_t>(is[1].u32() >> shift));
  }
  post(world, is[0].u32(), std::move(data));
}
void fix(World& world, const Arguments& is) {
  sent(world, world.host.mainApplication.sendFix(is[0].u32(), toBytes(is[1].text)));
}
void correctText(World& world, const Arguments& is) {
  const std::string text = toBytes(is[0].text);
  if (text.size() > kSessionTextSize) throw BadStatement("a text record holds no such text");
  world.records().writeCorrectedText(text);
}
void replaceText(World& world, const Arguments& is) {
  correctText(world, is);
  post(world, "Updt"_4cc, std::nullopt);
}

// Time.

void wait(World& world, double nanoseconds) {
  world.host.wait(static_cast<std::uint64_t>(nanoseconds));
}
void waitTicks(World& world, const Arguments& is) {
  wait(world, is[0].measure * static_cast<double>(memory::kNanosecondsPerTick));
  world.settle();
}
void waitSeconds(World& world, const Arguments& is) {
  wait(world, is[0].measure * 1e9);
  world.settle();
}

// The main application and the others.

constexpr auto kQueued = memory::Notice::Queued;
constexpr auto kMissed = memory::Notice::Missed;
constexpr auto kKept = memory::SegmentFate::Kept;
constexpr auto kRemoved = memory::SegmentFate::Removed;

void launch(World& world, memory::Notice notice) {
  world.host.mainApplication.launch(notice);
  world.settle();
}
void vanish(World& world, memory::Notice notice, memory::SegmentFate segments) {
  world.host.mainApplication.vanish(notice, segments);
  world.settle();
}
void bringToFront(World& world, const ProcessSerialNumber& psn, memory::Notice notice) {
  world.host.processes.setFront(psn, notice);
  world.settle();
}
void appStarts(World& world, const Arguments& /*is*/) { launch(world, kQueued); }
void appStartsUnnoticed(World& world, const Arguments& /*is*/) { launch(world, kMissed); }
void appQuits(World& world, const Arguments& /*is*/) { vanish(world, kQueued, kRemoved); }
void appQuitsUnnoticed(World& world, const Arguments& /*is*/) { vanish(world, kMissed, kRemoved); }
void appCrashes(World& world, const Arguments& /*is*/) { vanish(world, kQueued, kKept); }
void appCrashesUnnoticed(World& world, const Arguments& /*is*/) { vanish(world, kMissed, kKept); }
void appToFront(World& world, const Arguments& /*is*/) {
  bringToFront(world, world.host.mainApplication.psn(), kQueued);
}
void appToFrontUnnoticed(World& world, const Arguments& /*is*/) {
  bringToFront(world, world.host.mainApplication.psn(), kMissed);
}
void applicationToFront(World& world, const Arguments& is) {
  bringToFront(world, world.application(is[0].word), kQueued);
}
void nothingInFront(World& world, const Arguments& /*is*/) { bringToFront(world, {}, kQueued); }
void applicationQuits(World& world, const Arguments& is) {
  world.host.processes.remove(world.application(is[0].word));
  world.settle();
}

// Commands and commits that no key reaches.

void flagCommand(World& world, const Arguments& is) {
  Do_BIM_CallDirectQorvToolCommandAppEvent(world.instance, is[0].u32());
}
void flagCommandWaiting(World& world, const Arguments& is) {
  Do_BIM_CallDirectQorvToolCommandAppEvent_Wait(world.instance, is[0].u32());
}
void messageCommand(World& world, const Arguments& is) {
  CallDirectQorvToolCommandAppEvent(world.instance, is[0].u32());
}
void messageCommandWaiting(World& world, const Arguments& is) {
  CallDirectQorvToolCommandAppEventWait(world.instance, is[0].u32());
}
void openingCommand(World& world, const Arguments& is) {
  CallQuorvaneToolCommand(world.instance, is[0].u32(), false);
}
void openingCommandNamed(World& world, const Arguments& is) {
  CallQuorvaneToolCommand(world.instance, is[0].u32(), true);
}
void askForWritingStyles(World& world, const Arguments& /*is*/) {
  const auto buffer = do_New_Get_Qorv_Menu_Handle(world.instance, 0);
  world.writingStyles.reset();
  if (buffer) world.writingStyles = (*buffer)[3];
}
void parkBytes(World& world, const Arguments& is) {
  const std::string bytes = toBytes(is[0].text);
  Do_commit_to_composition(world.instance, reinterpret_cast<const std::uint8_t*>(bytes.data()),
                           static_cast<std::uint32_t>(bytes.size()), {is[1].u32()});
}
void commitRomanByte(World& world, const Arguments& is) {
  const auto byte = static_cast<std::uint8_t>(is[0].number);
  Send_Char_Fix(world.instance, &byte, {is[1].u32()});
}
void deliverPosted(World& world, const Arguments& /*is*/) { world.settle(); }

constexpr Pattern kActs[] = {
    {"start", start},
    {"start with TEXT", startWith},
    {"start with TEXT TEXT", startWith},
    {"begin again", beginAgain},
    {"type KEYS", press},
    {"press KEYS", press},
    {"press KEY without an event record", pressWithoutRecord},
    {"press key code CODE giving TEXT", pressKeyCode},
    {"press key code CODE giving TEXT with MODIFIERS", pressKeyCode},
    {"key down KEY", keyDown},
    {"key repeat KEY", keyRepeat},
    {"key up KEY", keyUp},
    {"modifiers MODIFIERS", modifiers},
    {"tap MODIFIERS", tap},
    {"click at PLACE", click},
    {"focus NAME", focus},
    {"leave the document", leave},
    {"activate NAME", activate},
    {"deactivate NAME", deactivate},
    {"document NAME closes", closeDocument},
    {"controller ends", endController},
    {"connection ends", endConnection},
    {"message NUMBER", message},
    {"message NUMBER number NUMBER", messageWithNumber},
    {"fix NUMBER to TEXT", fix},
    {"message NUMBER bytes BYTES", messageWithBytes},
    {"main application writes TEXT", correctText},
    {"main application replaces the text by TEXT", replaceText},
    {"wait TIME ticks", waitTicks},
    {"wait TIME seconds", waitSeconds},
    {"main application starts", appStarts},
    {"main application starts unnoticed", appStartsUnnoticed},
    {"main application quits", appQuits},
    {"main application quits unnoticed", appQuitsUnnoticed},
    {"main application crashes", appCrashes},
    {"main application crashes unnoticed", appCrashesUnnoticed},
    {"main application comes to the front", appToFront},
    {"main application comes to the front unnoticed", appToFrontUnnoticed},
    {"application NAME comes to the front", applicationToFront},
    {"application NAME quits", applicationQuits},
    {"nothing comes to the front", nothingInFront},
    {"tool command NUMBER by flag route", flagCommand},
    {"tool command NUMBER by flag route waiting", flagCommandWaiting},
    {"tool command NUMBER by message route", messageCommand},
    {"tool command NUMBER by message route waiting", messageCommandWaiting},
    {"tool command NUMBER by opening route", openingCommand},
    {"tool command NUMBER by opening route naming the client", openingCommandNamed},
    {"ask for the writing styles", askForWritingStyles},
    {"park bytes TEXT replacing NUMBER", parkBytes},
    {"commit Roman byte BYTE replacing NUMBER", commitRomanByte},
    {"run loop turns", deliverPosted},
};

}  // namespace

std::span<const Pattern> actPatterns() { return kActs; }

}  // namespace quorvane::scenario
