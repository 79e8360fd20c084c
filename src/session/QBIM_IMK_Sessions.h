#pragma once
// Sessions: which client has which, how they come and go. The head of the list is never removed.

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

/// A new session that is in no list, or null. `client` isn't used.
BIMSessionRec* CreateNewSessionHandle(Instance& instance, ClientID client);

/// Makes a session where `sessionOut` is null. 0, or ~0 where none could be made.
std::int32_t BIMSessionOpen(Instance& instance, std::uint64_t unused, BIMSessionRec*& sessionOut);
std::int32_t BIMSessionActivate(Instance& instance, BIMSessionRec* session);
std::int32_t BIMSessionDeactivate(Instance& instance, BIMSessionRec* session);
/// Nothing: inactive sessions are kept.
void Dispose_InactiveSessions(Instance& instance);
/// Disposes of the session and all behind it, the last one first.
void BIMSessionClose(Instance& instance, BIMSessionRec* session);
void DisposeSession(Instance& instance, BIMSessionRec* session);
/// The session that the window belongs to, or from now on does.
SessionHandle GetBIMWindowSession(Instance& instance, std::uint64_t window);
void SetBIMWindowSession(Instance& instance, std::uint64_t window, SessionHandle handle);
BIMSessionRec* Get_ActiveSession(BIMSessionRec* session);

/// Makes the client's session active, making one where it has none. 1: it is active now.
std::int32_t Get_SessionHandleFromID(Instance& instance, ClientID client);
/// Removes a client's session, never the head. 1: there was one.
std::int32_t DeleteSessionHandleID(Instance& instance, ClientID client);
void DeleteAllQorvSessionHandleID(Instance& instance);
/// Removes the sessions of applications that have gone.
void Check_App_HouseKeeping(Instance& instance);
/// 1: a running process has that creator code.
std::int32_t Get_signature_Process(Instance& instance, std::uint32_t signature);

std::uint32_t Get_Quorvane_App_Input(Instance& instance);
std::uint32_t Get_Reset_Quorvane_App_Input(Instance& instance);
void Set_ToolSessionhandle(Instance& instance, const BIMSessionRec* session);
/// Nonzero: this client's keys belong to the main application.
std::uint32_t Do_Check_Quorvane_App_Input(Instance& instance, ClientID client);

std::int32_t BIMSessionFix(BIMSessionRec* session);

}  // namespace quorvane
