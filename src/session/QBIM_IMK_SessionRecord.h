#pragma once
// The record of a session, and who owns it. Sessions form a singly linked list that lives as long
// as the process; at most one of them is active, and every key goes to it.

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "src/base/Instance.h"
#include "src/bridge/SharedLayout.h"

namespace quorvane {

inline constexpr std::uint32_t kSessionTextSize = 384;
/// A text of 384 bytes has its terminator at index 384.
using SessionText = std::array<std::uint8_t, kSessionTextSize + 1>;
/// Of each byte: it stands for a typed character beyond ASCII, as the first byte of its UTF-8 form,
/// and isn't to be read as Mac OS Roman.
using SessionMarks = std::array<bool, kSessionTextSize + 1>;

/// What identifies a client: the low 32 bits of its address.
enum class ClientID : std::uint32_t { None = 0 };
/// What identifies a session, in field 34 too. Never used again.
enum class SessionHandle : std::uint32_t { None = 0 };

struct BIMSessionRec {
  BIMSessionRec* next = nullptr;
  std::unique_ptr<SessionText> sessionText;  ///< null: every operation on text does nothing
  SessionMarks beyondAscii{};
  std::uint32_t cursor = 0;  ///< bytes; never above `length`
  std::uint32_t length = 0;  ///< bytes; never above kSessionTextSize
  std::uint32_t place = 0;   ///< from here on the text is known to stand in the document, too
  bool published = false;    ///< as it is now
  std::uint64_t documentRef = 0;
  std::uint32_t documentTag = 0;  ///< its 'dapy' property; nonzero: a fix refreshes the session
  std::uint64_t windowRef = 0;
  std::uint32_t editState = 0;
  std::uint32_t appMark32 = 0;
  std::uint32_t scanMark7 = 0;
  std::uint32_t appMark30 = 0;
  std::uint32_t sentenceFlags = 0;
  ClientID clientID{};          ///< None: belongs to no client
  std::int32_t appInput = 0;    ///< field 9 at the last lookup
  std::uint32_t signature = 0;  ///< creator code of the front process then; 0: never reaped
  SessionHandle handle{};
};

struct SessionState {
  BIMSessionRec* gSessionHandleStart = nullptr;
  BIMSessionRec* gActiveSession = nullptr;
  std::uint32_t BIMSESSIONACTVATED = 0;

  std::vector<std::unique_ptr<BIMSessionRec>> records;  ///< every session, linked or not
  /// Disposed of, and without their text, but not gone yet: the active one, for as long as
  /// gActiveSession names it, and those that somebody may still hold.
  std::vector<std::unique_ptr<BIMSessionRec>> retired;
  std::uint32_t users = 0;  ///< how many SessionsInUse live
  std::uint32_t lastHandle = 0;
};

/// While one lives no session that is disposed of goes away: every operation on it does nothing.
/// For whoever holds a session while the run loop may turn.
class SessionsInUse {
 public:
  explicit SessionsInUse(Instance& instance);
  ~SessionsInUse();
  SessionsInUse(const SessionsInUse&) = delete;
  SessionsInUse& operator=(const SessionsInUse&) = delete;

 private:
  SessionState& sessions_;
};

[[nodiscard]] ClientID identityOf(const IMKTextInput* client);

/// A record of no session yet, owned by the state; null without memory.
BIMSessionRec* addRecord(SessionState& sessions);
/// Frees the text and the record; the record itself outlives its freeing while somebody may hold
/// it.
void freeSession(Instance& instance, BIMSessionRec* session);
/// The session of that handle; null where it is gone.
BIMSessionRec* findSession(Instance& instance, SessionHandle handle);
BIMSessionRec* BIMGetActiveSession(Instance& instance);

/// Forgets the marks, and leaves text and cursor alone.
void BIM_Cancel_Session_Text(BIMSessionRec* session);
/// Forgets the text.
void BIMMouseEditCancelSession(Instance& instance, BIMSessionRec* session);
/// The same under its second name.
void BIM_CancelSessionTextBuffer(Instance& instance, BIMSessionRec* session);
/// The document went its own way: only of what is typed from now on the place is known there.
void losePlace(BIMSessionRec* session);

}  // namespace quorvane
