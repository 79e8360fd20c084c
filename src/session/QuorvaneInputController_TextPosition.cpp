#include "src/session/QuorvaneInputController_TextPosition.h"

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/base/ScreenPoint.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/CharacterPolicy.h"
#include "src/session/CurrentAppFlags.h"

namespace quorvane {
namespace {

constexpr double kBelowLine = 2.0;
constexpr int kRightOfLine = 12;
constexpr QDRect kFallbackRect{44, 100, 144, 200};
constexpr int kRightOfFallback = 50;

NSRect firstScreen(Process& process) {
  const auto screens = process.platform().screens.screens();
  return screens.empty() ? NSRect{} : screens.front();
}

std::int16_t wrap(int value) { return static_cast<std::int16_t>(value); }

// A fixed place near the top of the screen, for a client that can't tell.
QDPoint fallbackPoint(Process& process) {
  QDRect rect = kFallbackRect;
  GetDeskTopRectangle(process);
  HCentRect(process, rect);
  return {rect.top, wrap(rect.right + kRightOfFallback)};
}

}  // namespace

void Grab_Text_Position(Process& process, std::uint8_t keyByte, IMKTextInput* client) {
  auto& count = process.state<TextPositionState>().typing_count;
  count = valid_chr(keyByte) || keyByte == kBackspaceKey ? count + 1 : 0;
  if (count == 0 || count == 1) Get_Text_Position(process, client);
}

void Get_Text_Position(Process& process, IMKTextInput* client) {
  NSRect rect;
  if (client != nullptr) client->attributesForCharacterIndex(0, rect);
  auto& state = process.state<TextPositionState>();
  if (rect.height == 0) {
    Log(process, "********* ERROR attributesForCharacterIndex -- Get_Text_Position");
    state.location = {0, 0};
    return;
  }
  Nrect_to_Rect(process, state.qdRect, rect);
  state.location.y = state.qdRect.top + rect.height + kBelowLine;
  state.location.x = state.qdRect.left + kRightOfLine;
}

QDRect SSQDRectFromNSRect(const NSRect& rect, const NSRect& screenFrame) {
  const double top = screenFrame.height - rect.y - rect.height;
  return {toScreenUnit(top), toScreenUnit(rect.x), toScreenUnit(top + rect.height),
          toScreenUnit(rect.x + rect.width)};
}

void Nrect_to_Rect(Process& process, QDRect& qdRectOut, const NSRect& rect) {
  qdRectOut = SSQDRectFromNSRect(rect, firstScreen(process));
}

std::int32_t GetTextPosition(Process& process, BIMSessionRec* /*session*/, std::uint32_t /*unused*/,
                             QDPoint& pointOut) {
  const HIPoint& location = process.state<TextPositionState>().location;
  pointOut = {toScreenUnit(location.y), toScreenUnit(location.x)};
  return 0;
}

std::int32_t Get_Last_TextPosition(Process& process, BIMSessionRec* /*session*/,
                                   std::uint32_t /*unused*/, HIPoint& pointOut) {
  pointOut = process.state<TextPositionState>().location;
  return 0;
}

void Do_Get_Text_Position(Process& process, BIMSessionRec* session) {
  Do_Get_Session_Text_Position(process, session);
}

void Do_Get_Session_Text_Position(Process& process, BIMSessionRec* session) {
  const std::uint32_t flags = process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  if (session == nullptr || (flags & kTextPositionFlag) == 0) return;
  QDPoint point;
  GetTextPosition(process, session, 0, point);
  if (point.v == 0 && point.h == 0) point = fallbackPoint(process);
  if (ToolRec record(process); record) {
    record.put(ToolCRecPtr_TextPosition, packPoint(point.v, point.h));
  }
}

void GetDeskTopRectangle(Process& process) {
  const NSRect bounds = process.platform().screens.HIWindowGetAvailablePositioningBounds();
  auto& state = process.state<TextPositionState>();
  state.screenBitsBounds = {toScreenUnit(bounds.y), toScreenUnit(bounds.x),
                            toScreenUnit(bounds.y + bounds.height),
                            toScreenUnit(bounds.x + bounds.width)};
  state.dragBoundsRect = state.screenBitsBounds;
  state.dragBoundsRect.right = wrap(state.dragBoundsRect.right - 4);
  state.dragBoundsRect.bottom = wrap(state.dragBoundsRect.bottom - 4);
}

void Get_DeskTopRectangle(Process& process, std::uint32_t /*unused*/) {
  process.state<TextPositionState>().DeskTopRectangle = process.platform().screens.mainScreen();
}

void HCentRect(Process& process, QDRect& rect) {
  const int width = rect.right - rect.left;
  const int screenRight = process.state<TextPositionState>().screenBitsBounds.right;
  rect.left = wrap((screenRight - width) >> 1);
  rect.right = wrap(rect.left + width);
}

void reset_typing_count(Process& process) { process.state<TextPositionState>().typing_count = 0; }

void do_Get_Text_Position(Process& process, IMKTextInput* client) {
  Log(process, "do_Get_Text_Position ", static_cast<std::uint32_t>(identityOf(client)));
}

}  // namespace quorvane
