#include "src/session/QuorvaneInputController_TextPosition.h"

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/base/ScreenPoint.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/session/CharacterPolicy.h"

namespace quorvane {
namespace {

constexpr double kBelowLine = 2.0;
constexpr int kRightOfLine = 12;
constexpr QDRect kFallbackRect{44, 100, 144, 200};
constexpr int kRightOfFallback = 50;

NSRect firstScreen(Instance& instance) {
  const auto screens = instance.platform().screens.screens();
  return screens.empty() ? NSRect{} : screens.front();
}

std::int16_t wrap(int value) { return static_cast<std::int16_t>(value); }

// A fixed place near the top of the screen, for a client that can't tell.
QDPoint fallbackPoint(Instance& instance) {
  QDRect rect = kFallbackRect;
  GetDeskTopRectangle(instance);
  HCentRect(instance, rect);
  return {rect.top, wrap(rect.right + kRightOfFallback)};
}

}  // namespace

void Grab_Text_Position(Instance& instance, std::uint8_t keyByte, IMKTextInput* client) {
  auto& count = instance.state<TextPositionState>().typing_count;
  count = valid_chr(keyByte) || keyByte == kBackspaceKey ? count + 1 : 0;
  if (count == 0 || count == 1) Get_Text_Position(instance, client);
}

void Get_Text_Position(Instance& instance, IMKTextInput* client) {
  NSRect rect;
  if (client != nullptr) client->attributesForCharacterIndex(0, rect);
  auto& state = instance.state<TextPositionState>();
  if (rect.height == 0) {
    Log(instance, "********* ERROR attributesForCharacterIndex -- Get_Text_Position");
    state.location = {0, 0};
    return;
  }
  Nrect_to_Rect(instance, state.qdRect, rect);
  state.location.y = state.qdRect.top + rect.height + kBelowLine;
  state.location.x = state.qdRect.left + kRightOfLine;
}

QDRect SSQDRectFromNSRect(const NSRect& rect, const NSRect& screenFrame) {
  const double top = screenFrame.height - rect.y - rect.height;
  return {toScreenUnit(top), toScreenUnit(rect.x), toScreenUnit(top + rect.height),
          toScreenUnit(rect.x + rect.width)};
}

void Nrect_to_Rect(Instance& instance, QDRect& qdRectOut, const NSRect& rect) {
  qdRectOut = SSQDRectFromNSRect(rect, firstScreen(instance));
}

std::int32_t GetTextPosition(Instance& instance, BIMSessionRec* /*session*/,
                             std::uint32_t /*unused*/, QDPoint& pointOut) {
  const HIPoint& location = instance.state<TextPositionState>().location;
  pointOut = {toScreenUnit(location.y), toScreenUnit(location.x)};
  return 0;
}

std::int32_t Get_Last_TextPosition(Instance& instance, BIMSessionRec* /*session*/,
                                   std::uint32_t /*unused*/, HIPoint& pointOut) {
  pointOut = instance.state<TextPositionState>().location;
  return 0;
}

void Do_Get_Text_Position(Instance& instance, BIMSessionRec* session) {
  Do_Get_Session_Text_Position(instance, session);
}

void Do_Get_Session_Text_Position(Instance& instance, BIMSessionRec* session) {
  const std::uint32_t flags = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  if (session == nullptr || (flags & kTextPositionFlag) == 0) return;
  QDPoint point;
  GetTextPosition(instance, session, 0, point);
  if (point.v == 0 && point.h == 0) point = fallbackPoint(instance);
  if (ToolRec record(instance); record) {
    record.put(ToolCRecPtr_TextPosition, packPoint(point.v, point.h));
  }
}

void GetDeskTopRectangle(Instance& instance) {
  const NSRect bounds = instance.platform().screens.HIWindowGetAvailablePositioningBounds();
  auto& state = instance.state<TextPositionState>();
  state.screenBitsBounds = {toScreenUnit(bounds.y), toScreenUnit(bounds.x),
                            toScreenUnit(bounds.y + bounds.height),
                            toScreenUnit(bounds.x + bounds.width)};
  state.dragBoundsRect = state.screenBitsBounds;
  state.dragBoundsRect.right = wrap(state.dragBoundsRect.right - 4);
  state.dragBoundsRect.bottom = wrap(state.dragBoundsRect.bottom - 4);
}

void Get_DeskTopRectangle(Instance& instance, std::uint32_t /*unused*/) {
  instance.state<TextPositionState>().DeskTopRectangle = instance.platform().screens.mainScreen();
}

void HCentRect(Instance& instance, QDRect& rect) {
  const int width = rect.right - rect.left;
  const int screenRight = instance.state<TextPositionState>().screenBitsBounds.right;
  rect.left = wrap((screenRight - width) >> 1);
  rect.right = wrap(rect.left + width);
}

void reset_typing_count(Instance& instance) {
  instance.state<TextPositionState>().typing_count = 0;
}

void do_Get_Text_Position(Instance& instance, IMKTextInput* client) {
  Log(instance, "do_Get_Text_Position ", static_cast<std::uint32_t>(identityOf(client)));
}

}  // namespace quorvane
