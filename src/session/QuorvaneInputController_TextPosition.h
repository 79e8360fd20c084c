#pragma once
// Where the insertion point is, so that the main application can show its windows beside it: in the
// old screen convention of 16-bit coordinates with the origin at the top left.

#include "src/base/ScreenPoint.h"
#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

struct TextPositionState {
  HIPoint location;  ///< where a popup should go; (0, 0): the client didn't tell
  QDRect qdRect;
  std::int32_t typing_count = 0;
  QDRect screenBitsBounds;
  QDRect dragBoundsRect;
  NSRect DeskTopRectangle;
};

/// On every key event; asks the client at a word's first character and at every other key.
void Grab_Text_Position(Instance& instance, std::uint8_t keyByte, IMKTextInput* client);
void Get_Text_Position(Instance& instance, IMKTextInput* client);

/// A rectangle based at the bottom left, flipped by the frame's height and truncated.
QDRect SSQDRectFromNSRect(const NSRect& rect, const NSRect& screenFrame);
/// The same by the first screen.
void Nrect_to_Rect(Instance& instance, QDRect& qdRectOut, const NSRect& rect);

std::int32_t GetTextPosition(Instance& instance, BIMSessionRec* session, std::uint32_t unused,
                             QDPoint& pointOut);
std::int32_t Get_Last_TextPosition(Instance& instance, BIMSessionRec* session, std::uint32_t unused,
                                   HIPoint& pointOut);

/// Publishes the position to field 28, where the switches ask for it.
void Do_Get_Text_Position(Instance& instance, BIMSessionRec* session);
void Do_Get_Session_Text_Position(Instance& instance, BIMSessionRec* session);

/// Refreshes `screenBitsBounds` and `dragBoundsRect`.
void GetDeskTopRectangle(Instance& instance);
/// Stores the main screen's frame.
void Get_DeskTopRectangle(Instance& instance, std::uint32_t unused);
/// Centres the rectangle horizontally, keeping its width.
void HCentRect(Instance& instance, QDRect& rect);
void reset_typing_count(Instance& instance);
/// Logs only.
void do_Get_Text_Position(Instance& instance, IMKTextInput* client);

}  // namespace quorvane
