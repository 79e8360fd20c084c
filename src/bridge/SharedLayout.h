#pragma once
// All that the input method and the main application agree on in shared memory: the segments byte
// by byte, who writes what, and the numbers that stand there.
//
//   880  ToolCRec, 376 bytes
//        0     1     4            68              288        312         344                  376
//        wake  ...   client name  fields 0 to 54  status     QORVSTATUS  INTERACTIVESCANPTR
//                    Pascal, 64   32 bits each    flags
//   893  interactive text record, 393 bytes
//        0       4       8                     392
//        cursor  length  text, to the cursor   key byte
//   896  AEToolEventSelectStruct, the last command
//   897  menu buffer record
//        0           4                 8
//        item count  checked position  Pascal strings back to back
//   899  last spell check, 708 bytes
//        0    4                 8             36                708
//        ...  suggestion count  checked word  24 suggestions
//                               28 bytes      28 bytes each, ends in 0
//
// 32-bit words are big-endian, save those of 896 and 899, which are in host order.
// "app" is the main application, "im" the input method.

#include <array>
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
inline constexpr std::size_t kSpellRecordSize = 708;

struct SharedSegment {
  std::uint32_t key;
  std::size_t size;  ///< that is asked for on attach
};
inline constexpr std::array<SharedSegment, 5> kSharedSegments{
    {{kToolCRecKey, kToolCRecSize},
     {kInteractiveTextKey, 384},
     {kToolEventKey, 408},
     {kMenuBufferKey, kMenuBufferSize},
     {kSpellRecordKey, kSpellRecordSize}}};

inline constexpr std::size_t ToolCRecPtr_WakeFlag = 0;    ///< app: byte offset, one byte
inline constexpr std::size_t ToolCRecPtr_ClientName = 4;  ///< im: byte offset, Pascal string
inline constexpr std::uint8_t kClientNameLimit = 58;

inline constexpr std::size_t kFieldsOffset = 68;
inline constexpr std::size_t kStatusFlagsOffset = 288;
inline constexpr std::size_t kQorvStatusOffset = 312;
inline constexpr std::size_t kInteractiveScanOffset = 344;

// The text record. Both write cursor, length and text, the im the key as well.
inline constexpr std::size_t kTextCursorOffset = 0;
inline constexpr std::size_t kTextLengthOffset = 4;
inline constexpr std::size_t kTextOffset = 8;
inline constexpr std::size_t kTextKeyOffset = 392;

// The menu buffer record: the app writes it. No items: no data.
inline constexpr std::size_t kMenuCountOffset = 0;
inline constexpr std::size_t kMenuCheckedOffset = 4;  ///< from 1; 0: none
inline constexpr std::size_t kMenuItemsOffset = 8;

// The last spell check: the app writes it. Its first word is the app's own.
inline constexpr std::size_t kSpellCountOffset = 4;
inline constexpr std::size_t kSpellWordOffset = 8;
inline constexpr std::size_t kSpellSlotsOffset = 36;
inline constexpr std::size_t kSpellSlotSize = 28;  ///< also the word's
inline constexpr std::size_t kSpellSlots = 24;
static_assert(kSpellSlotsOffset + kSpellSlots * kSpellSlotSize == kSpellRecordSize);

/// Fields of the array, by index, and who writes each.
enum ToolCRecField : std::uint32_t {
  ToolCRecPtr_unusedx1 = 0,              ///< im
  ToolCRecPtr_USEFLAGS2 = 1,             ///< im sets request bits, app clears what is done
  ToolCRecPtr_InteractiveMode = 6,       ///< app: interactive checking is on
  ToolCRecPtr_MenuFlags = 7,             ///< app
  ToolCRecPtr_MenuMask = 8,              ///< app: in common with MenuFlags, the menu is off
  ToolCRecPtr_AppInput = 9,              ///< app: it takes input itself
  ToolCRecPtr_InputMethodFlags = 10,     ///< im: bit 0, it is attached
  ToolCRecPtr_BufferChanged = 11,        ///< app: it changed the text; im clears
  ToolCRecPtr_WindowAppSignature = 12,   ///< app: whose text its open window belongs to
  ToolCRecPtr_ScanPositionValid = 14,    ///< app
  ToolCRecPtr_AppState = 15,             ///< app
  ToolCRecPtr_MachPortBusy = 16,         ///< im: busy guard of the server port
  ToolCRecPtr_WritingStyleMark = 18,     ///< app
  ToolCRecPtr_SuspendTotal = 19,         ///< app: key presses to stay silent for; im clears
  ToolCRecPtr_SuspendCount = 20,         ///< im
  ToolCRecPtr_UpdateMenus = 21,          ///< app: menus to rebuild; im clears
  ToolCRecPtr_unusedx2 = 22,             ///< im: busy marker, despite its name
  ToolCRecPtr_AutoTypeSelection = 24,    ///< both
  ToolCRecPtr_PopupKeyMode = 25,         ///< app
  ToolCRecPtr_PopupChar = 26,            ///< both: the key, then the answer
  ToolCRecPtr_ClipState = 27,            ///< both
  ToolCRecPtr_TextPosition = 28,         ///< im: vertical in the high half, horizontal in the low
  ToolCRecPtr_SessionMark = 30,          ///< both
  ToolCRecPtr_isDocWindowOpen = 31,      ///< app
  ToolCRecPtr_SuggestionState = 32,      ///< app
  ToolCRecPtr_WindowFlags = 33,          ///< app
  ToolCRecPtr_SessionHandle = 34,        ///< im: the current session
  ToolCRecPtr_SmartCharFlags = 38,       ///< app
  ToolCRecPtr_SessionKind = 39,          ///< im
  ToolCRecPtr_AutoMark = 40,             ///< im
  ToolCRecPtr_CheckRunning = 41,         ///< app
  ToolCRecPtr_AppReady = 42,             ///< app: it has finished starting
  ToolCRecPtr_MousePoint = 44,           ///< both: the click, packed like TextPosition; the answer
  ToolCRecPtr_WritingStyleRequest = 46,  ///< im
  ToolCRecPtr_MenuCallEvent = 48,        ///< im
  ToolCRecPtr_AppFlagStatus = 49,        ///< both: CURRENTAPPFLAGSTATUS
  ToolCRecPtr_Version = 51,              ///< im: always 8
  ToolCRecPtr_WindowRectTopLeft = 52,    ///< app
  ToolCRecPtr_WindowRectBottomRight = 53,  ///< app
  ToolCRecPtr_ScanFlags = 54,              ///< both: bit 16, a sentence scan is asked for
};
inline constexpr std::uint32_t kFieldCount = 55;

static_assert(kFieldsOffset + 4 * std::size_t{kFieldCount} == kStatusFlagsOffset);
static_assert(kInteractiveScanOffset + 4 * 8 == kToolCRecSize);

/// Entries of the QORVSTATUS group.
enum QorvStatusEntry : std::uint32_t {
  QorvStatus_AppFlags = 1,          ///< im: copy of AppFlagStatus
  QorvStatus_PasteSignature = 5,    ///< app: whom to paste into
  QorvStatus_PasteProcessType = 6,  ///< app
};
/// Entries of the INTERACTIVESCANPTR group.
enum InteractiveScanEntry : std::uint32_t {
  InteractiveScan_ChangeCode = 4,     ///< both: the session's editState
  InteractiveScan_SentenceStart = 5,  ///< app: bit 0, a sentence starts with the next letter
  InteractiveScan_Position = 7,       ///< both
};

// What single fields say.
inline constexpr std::uint32_t kNoWindow = 0;  ///< isDocWindowOpen; others: the document window
inline constexpr std::uint32_t kPopupWindow = 1;
inline constexpr std::uint32_t kRestoreArmed = 1;  ///< ClipState
inline constexpr std::uint32_t kRestoreDue = 2;
inline constexpr std::uint32_t kEditCursorMovedLeft = 1;  ///< ChangeCode; set by OR
inline constexpr std::uint32_t kEditOverflow = 2;
inline constexpr std::uint32_t kEditCancelled = 3;
inline constexpr std::uint32_t kSentenceStart = 1;  ///< SentenceStart
inline constexpr std::uint32_t kSmartQuotes = 1;    ///< SmartCharFlags
inline constexpr std::uint32_t kSmartDashes = 2;
inline constexpr std::uint32_t kSentenceCapitals = 4;

/// Commands that are sent for a reason of ours; others come from menus.
enum ToolCommand : std::uint32_t {
  kWritingStylesCommand = 8,
  kScanSentenceCommand = 87,
  kShowHideWindowCommand = 100,
  kChooseSuggestionCommand = 101,
  kWindowModifiersCommand = 102,
  kCloseWindowCommand = 104,
  kClosePopupCommand = 105,
  kNavigatePopupCommand = 106,
  kJudgeClickCommand = 108,
  kSecurityTimerCommand = 121,
  kDictionarySettingsCommand = 16383,
  kRestoreClipboardCommand = 16390,
};

/// The bit of USEFLAGS2 that asks for a command.
struct CommandBit {
  std::uint32_t cmd;
  std::uint32_t bit;
};
inline constexpr std::array<CommandBit, 23> kCommandBits{{
    {2, 22},   // check all
    {6, 23},   // check spelling
    {7, 24},   // check grammar
    {17, 4},   // suggestions
    {35, 31},  // look-up
    {kShowHideWindowCommand, 2},
    {kCloseWindowCommand, 0},
    {kSecurityTimerCommand, 29},
    {kDictionarySettingsCommand, 3},
    {kRestoreClipboardCommand, 20},
    {17100, 13},  // format tools
    {17101, 14},
    {17102, 15},
    {17110, 16},  // convert tools
    {17111, 17},
    {17140, 5},   // dates: short
    {17141, 6},   // long
    {17142, 7},   // abbreviated
    {17145, 9},   // date and time: short
    {17146, 10},  // long
    {17147, 11},  // abbreviated
    {17149, 12},  // UTC
    {65534, 19},  // quit
}};
/// Those that are waited for. The scan's bit is also that of ScanFlags.
inline constexpr std::uint32_t kSentenceScanBit = 16;
inline constexpr std::array<CommandBit, 3> kWaitingCommandBits{
    {{kScanSentenceCommand, kSentenceScanBit},
     {kJudgeClickCommand, 17},
     {kRestoreClipboardCommand, 19}}};
inline constexpr CommandBit kWritingStylesBit{kWritingStylesCommand, 28};

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
