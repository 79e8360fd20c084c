#include "src/session/QBIM_IMK_Sessions.h"

#include <algorithm>
#include <new>

#include "src/bridge/Presence.h"
#include "src/bridge/ProcessWalk.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane {
namespace {

constexpr FourCharCode kDocumentProperty = "dapy"_4cc;

std::uint32_t idOf(std::uint64_t client) { return static_cast<std::uint32_t>(client); }

void readDocument(Process& process, BIMSessionRec& session) {
  TextServicesManager& services = process.platform().textServicesManager;
  const std::uint64_t document = services.TSMGetActiveDocument();
  static_cast<void>(FRONTPROCESSSIGNATURE(process));  // asked for, not used
  std::uint32_t tag = 0;
  if (document != 0 && services.TSMGetDocumentProperty(document, kDocumentProperty, tag) == noErr) {
    session.documentTag = tag;
  }
  session.documentRef = document;
}

// Field 34 from now on. A window over the document belongs to what was there before.
void announceSession(Process& process, std::uint32_t sessionValue) {
  {
    const ToolRec record(process);
    if (!record) return;
    record.put(ToolCRecPtr_SessionHandle, sessionValue);
  }
  BIMCancelWindowSession(process);
}

// Field 34 names the session that has gone, or nothing.
void announceRemoval(Process& process, std::uint32_t sessionValue) {
  if (FRONTPROCESSSIGNATURE(process) == kQuorvaneSignature) return;
  announceSession(process, sessionValue);
}

void activate(Process& process, BIMSessionRec& session) {
  process.state<SessionState>().gActiveSession = &session;
}

std::int32_t lookUpHead(Process& process, BIMSessionRec& head, std::uint32_t appInput) {
  if (appInput != 0) return 0;
  activate(process, head);
  head.appInput = 0;
  Set_ToolSessionhandle(process, &head);
  return 1;
}

// The main application isn't told of the change here: field 34 keeps naming the previous session
// until the next publication.
std::int32_t lookUpKnown(Process& process, BIMSessionRec& session, std::uint32_t appInput) {
  session.appInput = static_cast<std::int32_t>(appInput);
  if (appInput != 0) {
    session.cursor = 0;
    session.length = 0;
    if (session.sessionText) session.sessionText->front() = 0;
    return 0;
  }
  activate(process, session);
  return 1;
}

std::int32_t lookUpUnknown(Process& process, BIMSessionRec& tail, std::uint32_t clientID,
                           std::uint32_t appInput) {
  BIMSessionRec* session = CreateNewSessionHandle(process, clientID);
  if (session == nullptr) return 0;
  tail.next = session;
  session->appInput = static_cast<std::int32_t>(appInput);
  session->clientID = clientID;
  session->signature = FRONTPROCESSSIGNATURE(process);
  if (appInput != 0) return 0;
  activate(process, *session);
  Set_ToolSessionhandle(process, session);
  return 1;
}

BIMSessionRec* unlinkNext(BIMSessionRec& predecessor) {
  BIMSessionRec* victim = predecessor.next;
  predecessor.next = victim->next;
  return victim;
}

}  // namespace

BIMSessionRec* CreateNewSessionHandle(Process& process, std::uint64_t /*client*/) {
  BIMSessionRec* session = addRecord(process.state<SessionState>());
  if (session == nullptr) return nullptr;
  readDocument(process, *session);
  session->sessionText.reset(new (std::nothrow) SessionText{});
  Set_InteractiveSession(process, session, 0);
  session->sentenceFlags |= kSentenceStart;
  return session;
}

std::int32_t BIMSessionOpen(Process& process, std::uint64_t /*unused*/,
                            BIMSessionRec*& sessionOut) {
  if (isQUORVANEAPP_FRONT(process) != 0 || sessionOut != nullptr) return 0;
  sessionOut = CreateNewSessionHandle(process, 0);
  return sessionOut != nullptr ? 0 : ~0;
}

std::int32_t BIMSessionActivate(Process& process, BIMSessionRec* session) {
  auto& sessions = process.state<SessionState>();
  sessions.BIMSESSIONACTVATED = 1;
  sessions.gActiveSession = session;
  return 0;
}

std::int32_t BIMSessionDeactivate(Process& process, BIMSessionRec* /*session*/) {
  Dispose_InactiveSessions(process);
  return 0;
}

void Dispose_InactiveSessions(Process& /*process*/) {}

void BIMSessionClose(Process& process, BIMSessionRec* session) {
  std::vector<BIMSessionRec*> chain;
  for (; session != nullptr; session = session->next) chain.push_back(session);
  for (auto last = chain.rbegin(); last != chain.rend(); ++last) DisposeSession(process, *last);
}

void DisposeSession(Process& process, BIMSessionRec* session) {
  if (session == nullptr) return;
  const std::uint32_t handle = session->handle;
  if (session->windowRef != 0 && GetBIMWindowSession(process, session->windowRef) == handle) {
    SetBIMWindowSession(process, session->windowRef, 0);
  }
  freeSession(process, session);
  announceRemoval(process, handle);
}

std::uint64_t GetBIMWindowSession(Process& process, std::uint64_t window) {
  return process.platform().textServicesManager.GetWindowProperty(window);
}

void SetBIMWindowSession(Process& process, std::uint64_t window, std::uint64_t handle) {
  process.platform().textServicesManager.SetWindowProperty(window, handle);
}

BIMSessionRec* Get_ActiveSession(BIMSessionRec* session) { return session; }

std::int32_t Get_SessionHandleFromID(Process& process, std::uint64_t client) {
  const std::uint32_t clientID = idOf(client);
  const std::uint32_t appInput = Get_Quorvane_App_Input(process);
  BIMSessionRec* head = process.state<SessionState>().gSessionHandleStart;
  if (head == nullptr || FRONTPROCESSSIGNATURE(process) == kQuorvaneSignature || clientID == 0) {
    return 0;
  }
  if (head->clientID == clientID) return lookUpHead(process, *head, appInput);
  BIMSessionRec* tail = head;
  while (tail->next != nullptr) {
    tail = tail->next;
    if (tail->clientID == clientID) return lookUpKnown(process, *tail, appInput);
  }
  return lookUpUnknown(process, *tail, clientID, appInput);
}

std::int32_t DeleteSessionHandleID(Process& process, std::uint64_t client) {
  const std::uint32_t clientID = idOf(client);
  BIMSessionRec* session = process.state<SessionState>().gSessionHandleStart;
  if (session == nullptr || clientID == 0) return 0;
  for (; session->next != nullptr; session = session->next) {
    if (session->next->clientID != clientID) continue;
    freeSession(process, unlinkNext(*session));
    announceRemoval(process, 0);
    return 1;
  }
  return 0;
}

void DeleteAllQorvSessionHandleID(Process& process) {
  BIMSessionRec* session = process.state<SessionState>().gSessionHandleStart;
  while (session != nullptr && session->next != nullptr) {
    BIMSessionRec* next = session->next;
    if (next->clientID != 0 && next->appInput != 0) {
      DeleteSessionHandleID(process, next->clientID);
    } else {
      session = next;
    }
  }
}

void Check_App_HouseKeeping(Process& process) {
  BIMSessionRec* session = process.state<SessionState>().gSessionHandleStart;
  while (session != nullptr && session->next != nullptr) {
    const std::uint32_t signature = session->next->signature;
    if (signature != 0 && Get_signature_Process(process, signature) == 0) {
      freeSession(process, unlinkNext(*session));
    } else {
      session = session->next;
    }
  }
}

std::int32_t Get_signature_Process(Process& process, std::uint32_t signature) {
  ProcessManager& manager = process.platform().processManager;
  ProcessSerialNumber psn;
  for (ProcessWalk walk(process); walk.next(psn);) {
    ProcessInfoRec info;
    if (manager.GetProcessInformation(psn, info) != noErr) continue;
    if (info.processSignature == signature) return 1;
  }
  return 0;
}

std::uint32_t Get_Quorvane_App_Input(Process& process) {
  ToolRec record(process);
  return record ? record.get(ToolCRecPtr_AppInput) : 0;
}

std::uint32_t Get_Reset_Quorvane_App_Input(Process& process) {
  ToolRec record(process);
  if (!record) return 0;
  const std::uint32_t appInput = record.get(ToolCRecPtr_AppInput);
  if (appInput != 0) record.put(ToolCRecPtr_AppInput, 0);
  return appInput;
}

void Set_ToolSessionhandle(Process& process, const BIMSessionRec* session) {
  announceSession(process, session->handle);
}

std::uint32_t Do_Check_Quorvane_App_Input(Process& process, std::uint64_t client) {
  if (isQUORVANEAPP_FRONT(process) != 0) return 1;
  const std::uint32_t clientID = idOf(client);
  const BIMSessionRec* head = process.state<SessionState>().gSessionHandleStart;
  // The head isn't examined.
  for (const BIMSessionRec* session = head != nullptr ? head->next : nullptr; session != nullptr;
       session = session->next) {
    if (clientID != 0 && session->clientID == clientID && session->appInput != 0) return 1;
  }
  return Get_Quorvane_App_Input(process);
}

std::int32_t BIMSessionFix(BIMSessionRec* session) {
  if (session != nullptr) session->cursor = 0;
  return 0;
}

}  // namespace quorvane
