// Statements about keys that the program presses itself, and about the main application's window.

#include <array>

#include "hosts/keyboard/StandardLayouts.h"
#include "src/keys/QBIM_IMK_EventPosting.h"
#include "src/keys/qorvHIDkeys.h"
#include "src/session/QBIM_IMK_WindowCancel.h"
#include "src/session/QBIM_IMK_WindowClick.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

struct Layout {
  std::string_view name;
  keyboard::LayoutData (*data)();
};
constexpr std::array<Layout, 3> kLayouts{{{"us", keyboard::usLayout},
                                          {"us-with-dead-keys", keyboard::usLayoutWithDeadKeys},
                                          {"dvorak", keyboard::dvorakLayout}}};

void setLayout(World& world, const Arguments& is) {
  world.host.textInputSources.layout = nullptr;
  if (is[0].word == "none") return;
  for (const Layout& layout : kLayouts) {
    if (layout.name == is[0].word) return world.host.useLayout(layout.data());
  }
  throw BadStatement("there is no keyboard layout " + is[0].word);
}

// Keys pressed by the program.

void typeByProgram(World& world, const Arguments& is) {
  DO_FIX_CHAR(world.instance, nullptr, static_cast<std::uint16_t>(is[0].number));
  world.settle();
}
void typeAsText(World& world, const Arguments& is) {
  DO_FIX_CHAR_NO_MODIFIERS(world.instance, nullptr, static_cast<std::uint16_t>(is[0].number));
  world.settle();
}
void pressCommandKey(World& world, const Arguments& is) {
  PostCommandKey(world.instance, static_cast<std::uint16_t>(is[0].number));
  world.settle();
}
void pressDeviceKey(World& world, const Arguments& is) {
  HID_PressRelease_VirtualKey(world.instance, is[0].u32());
  world.settle();
}
void prepareMenuCommand(World& world, const Arguments& /*is*/) {
  do_PREP_QorvMain_Do_Menu_Tool_CommandID(world.instance, 0);
  world.settle();
}
void moveMouseByProgram(World& world, const Arguments& /*is*/) {
  Post_MouseMovedEvent(world.instance);
}

// The main application's window.

struct Cancel {
  std::string_view name;
  std::int64_t (*call)(World&);
};
constexpr std::array<Cancel, 6> kCancels{{
    {"window", [](World& world) { return std::int64_t{BIMCancelWindowSession(world.instance)}; }},
    {"any-window",
     [](World& world) { return std::int64_t{BIMAlwaysCancelWindowSession(world.instance)}; }},
    {"text-and-window",
     [](World& world) {
       BIMCancelandClose_WindowSession(world.instance);
       return std::int64_t{0};
     }},
    {"document-window",
     [](World& world) {
       const ClientID client = identityOf(&world.host.text.clientOf(world.focused()));
       return std::int64_t{BIMCheckandClose_DocWindowSession(world.instance, client)};
     }},
    {"interactive-window",
     [](World& world) {
       Cancel_Iteractive_Window(world.instance);
       return std::int64_t{0};
     }},
    {"suspension",
     [](World& world) { return std::int64_t{CHECK_InteractiveWindow_Cancel(world.instance)}; }},
}};

void cancelWindow(World& world, const Arguments& is) {
  for (const Cancel& cancel : kCancels) {
    if (cancel.name != is[0].word) continue;
    world.answer = cancel.call(world);
    return world.settle();
  }
  throw BadStatement("there is no cancelling of " + is[0].word);
}
void askAboutClick(World& world, const Arguments& is) {
  const QDPoint point{static_cast<std::int16_t>(is[0].number),
                      static_cast<std::int16_t>(is[1].number)};
  world.answer = BIMCancelMousePtWindowSession(world.instance, point) ? 1 : 0;
  world.settle();
}
void testClick(World& world, const Arguments& is) {
  world.host.screens.mouse = {is[0].measure, is[1].measure};
  world.answer = Get_MouseDown_Cancel(world.instance);
}
void expectAnswer(World& world, const Arguments& is) {
  world.expectNumber(is[0].number, world.answer);
}

constexpr Pattern kKeyStatements[] = {
    {"keyboard layout NAME", setLayout},
    {"program types CODE", typeByProgram},
    {"program types CODE as text", typeAsText},
    {"program presses command and CODE", pressCommandKey},
    {"program presses device key CODE", pressDeviceKey},
    {"program prepares a menu command", prepareMenuCommand},
    {"program moves the mouse", moveMouseByProgram},
    {"cancel NAME", cancelWindow},
    {"window is asked about a click at COORDINATE COORDINATE", askAboutClick},
    {"click is tested at MEASURE MEASURE", testClick},
    {"expect answer NUMBER", expectAnswer},
};

}  // namespace

std::span<const Pattern> keyPatterns() { return kKeyStatements; }

}  // namespace quorvane::scenario
