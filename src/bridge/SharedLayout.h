#pragma once
// The segments that the input method and the main application share, byte by byte.
//
//   880  ToolCRec, 376 bytes
//        0     1     4            68              288        312         344                  376
//        wake  ...   client name  fields 0 to 54  status     QORVSTATUS  INTERACTIVESCANPTR
//                    Pascal, 64   32 bits each    flags
//   893  interactive text record, 393 bytes
//        0       4       8                     392
//        cursor  length  text, to the cursor   key byte
//   896  AEToolEventSelectStruct, the last command
//   897  menu buffer record: item count, checked position, Pascal strings back to back
//
// 32-bit words are big-endian, save those of AEToolEventSelectStruct, which are in host order.

#include <cstddef>
#include <cstdint>

#include "platform/MacTypes.h"

namespace quorvane {

inline constexpr std::uint32_t kToolCRecKey = 880;
inline constexpr std::uint32_t kInteractiveTextKey = 893;
inline constexpr std::uint32_t kToolEventKey = 896;    ///< QUORVANEAPPCOM
inline constexpr std::uint32_t kMenuBufferKey = 897;   ///< QUORVANE_COMMUNICATE_APPMENUBUF
inline constexpr std::uint32_t kSpellRecordKey = 899;  ///< QUORVANESPELLRECCOM

inline constexpr std::size_t kToolCRecSize = 376;
inline constexpr std::size_t kInteractiveTextSize = 393;  ///< more than is asked for on attach
inline constexpr std::size_t kMenuBufferSize = 384;

inline constexpr std::size_t ToolCRecPtr_WakeFlag = 0;    ///< byte offset, one byte
inline constexpr std::size_t ToolCRecPtr_ClientName = 4;  ///< byte offset, Pascal string
inline constexpr std::uint8_t kClientNameLimit = 58;

inline constexpr std::size_t kFieldsOffset = 68;
inline constexpr std::size_t kStatusFlagsOffset = 288;
inline constexpr std::size_t kQorvStatusOffset = 312;
inline constexpr std::size_t kInteractiveScanOffset = 344;

inline constexpr std::size_t kTextCursorOffset = 0;
inline constexpr std::size_t kTextLengthOffset = 4;
inline constexpr std::size_t kTextOffset = 8;
inline constexpr std::size_t kTextKeyOffset = 392;

/// Fields of the array, by index. "app" is the main application.
enum ToolCRecField : std::uint32_t {
  ToolCRecPtr_unusedx1 = 0,
  ToolCRecPtr_USEFLAGS2 = 1,            ///< request bits: set here, cleared by the app when done
  ToolCRecPtr_InteractiveMode = 6,      ///< app: interactive checking is on
  ToolCRecPtr_MenuFlags = 7,            ///< app
  ToolCRecPtr_MenuMask = 8,             ///< app: in common with MenuFlags, the menu is off
  ToolCRecPtr_AppInput = 9,             ///< app: it takes input itself
  ToolCRecPtr_InputMethodFlags = 10,    ///< bit 0: the input method is attached
  ToolCRecPtr_BufferChanged = 11,       ///< app: it changed the text; cleared here
  ToolCRecPtr_WindowAppSignature = 12,  ///< app: whose text its open window belongs to
  ToolCRecPtr_ScanPositionValid = 14,   ///< app
  ToolCRecPtr_AppState = 15,            ///< app
  ToolCRecPtr_MachPortBusy = 16,        ///< busy guard of the server port
  ToolCRecPtr_WritingStyleMark = 18,    ///< app
  ToolCRecPtr_SuspendTotal = 19,        ///< app: key presses to stay silent for
  ToolCRecPtr_SuspendCount = 20,
  ToolCRecPtr_UpdateMenus = 21,  ///< app: menus to rebuild
  ToolCRecPtr_unusedx2 = 22,     ///< busy marker, despite its name
  ToolCRecPtr_AutoTypeSelection = 24,
  ToolCRecPtr_PopupKeyMode = 25,  ///< app
  ToolCRecPtr_PopupChar = 26,
  ToolCRecPtr_ClipState = 27,
  ToolCRecPtr_TextPosition = 28,  ///< vertical in the high half, horizontal in the low
  ToolCRecPtr_SessionMark = 30,
  ToolCRecPtr_isDocWindowOpen = 31,  ///< app: 0 none, 1 popup, other: document window
  ToolCRecPtr_SuggestionState = 32,  ///< app
  ToolCRecPtr_WindowFlags = 33,      ///< app
  ToolCRecPtr_SessionHandle = 34,    ///< the current session
  ToolCRecPtr_SmartCharFlags = 38,   ///< app
  ToolCRecPtr_SessionKind = 39,
  ToolCRecPtr_AutoMark = 40,
  ToolCRecPtr_CheckRunning = 41,  ///< app
  ToolCRecPtr_AppReady = 42,      ///< app: it has finished starting
  ToolCRecPtr_MousePoint = 44,    ///< packed like TextPosition
  ToolCRecPtr_WritingStyleRequest = 46,
  ToolCRecPtr_MenuCallEvent = 48,
  ToolCRecPtr_AppFlagStatus = 49,          ///< CURRENTAPPFLAGSTATUS
  ToolCRecPtr_Version = 51,                ///< always 8
  ToolCRecPtr_WindowRectTopLeft = 52,      ///< app
  ToolCRecPtr_WindowRectBottomRight = 53,  ///< app
  ToolCRecPtr_ScanFlags = 54,              ///< bit 16: a sentence scan is asked for
};
inline constexpr std::uint32_t kFieldCount = 55;

static_assert(kFieldsOffset + 4 * std::size_t{kFieldCount} == kStatusFlagsOffset);
static_assert(kInteractiveScanOffset + 4 * 8 == kToolCRecSize);

/// Also the first 24 bytes of a message to the server port, where only the command id, the zero
/// behind it and the signature are filled.
struct AEToolEventSelectStruct {
  std::uint32_t commandID = 0;
  std::uint32_t zero = 0;
  std::uint32_t unused8 = 0;
  FourCharCode frontSignature = 0;
  std::uint32_t frontProcessID = 0;
  std::uint32_t unused20 = 0;
};
static_assert(offsetof(AEToolEventSelectStruct, commandID) == 0);
static_assert(offsetof(AEToolEventSelectStruct, zero) == 4);
static_assert(offsetof(AEToolEventSelectStruct, frontSignature) == 12);
static_assert(offsetof(AEToolEventSelectStruct, frontProcessID) == 16);
static_assert(sizeof(AEToolEventSelectStruct) == 24);

}  // namespace quorvane
