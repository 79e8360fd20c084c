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

void readDocument(Instance& instance, BIMSessionRec& session) {
  TextServicesManager& services = instance.platform().textServicesManager;
  const std::uint64_t document = services.TSMGetActiveDocument();
  static_cast<void>(FRONTPROCESSSIGNATURE(instance));  // asked for, not used
  std::uint32_t tag = 0;
  if (document != 0 && services.TSMGetDocumentProperty(document, kDocumentProperty, tag) == noErr) {
    session.documentTag = tag;
  }
  session.documentRef = document;
}

// Field 34 from now on. A window over the document belongs to what was there before.
void announceSession(Instance& instance, SessionHandle handle) {
  {
    const ToolRec record(instance);
    if (!record) return;
    record.put(ToolCRecPtr_SessionHandle, static_cast<std::uint32_t>(handle));
  }
  BIMCancelWindowSession(instance);
}

// Field 34 names the session that has gone, or nothing.
void announceRemoval(Instance& instance, SessionHandle handle) {
  if (FRONTPROCESSSIGNATURE(instance) == kQuorvaneSignature) return;
  announceSession(instance, handle);
}

void activate(Instance& instance, BIMSessionRec& session) {
  instance.state<SessionState>().gActiveSession = &session;
}

std::int32_t lookUpHead(Instance& instance, BIMSessionRec& head, std::uint32_t appInput) {
  if (appInput != 0) return 0;
  activate(instance, head);
  head.appInput = 0;
  Set_ToolSessionhandle(instance, &head);
  return 1;
}

// The main application isn't told of the change here: field 34 keeps naming the previous session
// until the next publication.
std::int32_t lookUpKnown(Instance& instance, BIMSessionRec& session, std::uint32_t appInput) {
  session.appInput = static_cast<std::int32_t>(appInput);
  if (appInput != 0) {
    session.cursor = 0;
    session.length = 0;
    if (session.sessionText) session.sessionText->front() = 0;
    return 0;
  }
  activate(instance, session);
  return 1;
}

std::int32_t lookUpUnknown(Instance& instance, BIMSessionRec& tail, ClientID clientID,
                           std::uint32_t appInput) {
  BIMSessionRec* session = CreateNewSessionHandle(instance, clientID);
  if (session == nullptr) return 0;
  tail.next = session;
  session->appInput = static_cast<std::int32_t>(appInput);
  session->clientID = clientID;
  session->signature = FRONTPROCESSSIGNATURE(instance);
  if (appInput != 0) return 0;
  activate(instance, *session);
  Set_ToolSessionhandle(instance, session);
  return 1;
}

BIMSessionRec* unlinkNext(BIMSessionRec& predecessor) {
  BIMSessionRec* victim = predecessor.next;
  predecessor.next = victim->next;
  return victim;
}

}  // namespace

BIMSessionRec* CreateNewSessionHandle(Instance& instance, ClientID /*client*/) {
  BIMSessionRec* session = addRecord(instance.state<SessionState>());
  if (session == nullptr) return nullptr;
  readDocument(instance, *session);
  session->sessionText.reset(new (std::nothrow) SessionText{});
  Set_InteractiveSession(instance, session, 0);
  session->sentenceFlags |= kSentenceStart;
  return session;
}

std::int32_t BIMSessionOpen(Instance& instance, std::uint64_t /*unused*/,
                            BIMSessionRec*& sessionOut) {
  if (isQUORVANEAPP_FRONT(instance) != 0 || sessionOut != nullptr) return 0;
  sessionOut = CreateNewSessionHandle(instance, ClientID::None);
  return sessionOut != nullptr ? 0 : ~0;
}

std::int32_t BIMSessionActivate(Instance& instance, BIMSessionRec* session) {
  auto& sessions = instance.state<SessionState>();
  sessions.BIMSESSIONACTVATED = 1;
  sessions.gActiveSession = session;
  return 0;
}

std::int32_t BIMSessionDeactivate(Instance& instance, BIMSessionRec* /*session*/) {
  Dispose_InactiveSessions(instance);
  return 0;
}

void Dispose_InactiveSessions(Instance& /*process*/) {}

void BIMSessionClose(Instance& instance, BIMSessionRec* session) {
  std::vector<BIMSessionRec*> chain;
  for (; session != nullptr; session = session->next) chain.push_back(session);
  for (auto last = chain.rbegin(); last != chain.rend(); ++last) DisposeSession(instance, *last);
}

void DisposeSession(Instance& instance, BIMSessionRec* session) {
  if (session == nullptr) return;
  const SessionHandle handle = session->handle;
  if (session->windowRef != 0 && GetBIMWindowSession(instance, session->windowRef) == handle) {
    SetBIMWindowSession(instance, session->windowRef, SessionHandle::None);
  }
  freeSession(instance, session);
  announceRemoval(instance, handle);
}

SessionHandle GetBIMWindowSession(Instance& instance, std::uint64_t window) {
  return static_cast<SessionHandle>(
      instance.platform().textServicesManager.GetWindowProperty(window));
}

void SetBIMWindowSession(Instance& instance, std::uint64_t window, SessionHandle handle) {
  instance.platform().textServicesManager.SetWindowProperty(window,
                                                            static_cast<std::uint32_t>(handle));
}

BIMSessionRec* Get_ActiveSession(BIMSessionRec* session) { return session; }

std::int32_t Get_SessionHandleFromID(Instance& instance, ClientID clientID) {
  const std::uint32_t appInput = Get_Quorvane_App_Input(instance);
  BIMSessionRec* head = instance.state<SessionState>().gSessionHandleStart;
  if (head == nullptr || FRONTPROCESSSIGNATURE(instance) == kQuorvaneSignature ||
      clientID == ClientID::None) {
    return 0;
  }
  if (head->clientID == clientID) return lookUpHead(instance, *head, appInput);
  BIMSessionRec* tail = head;
  while (tail->next != nullptr) {
    tail = tail->next;
    if (tail->clientID == clientID) return lookUpKnown(instance, *tail, appInput);
  }
  return lookUpUnknown(instance, *tail, clientID, appInput);
}

std::int32_t DeleteSessionHandleID(Instance& instance, ClientID clientID) {
  BIMSessionRec* session = instance.state<SessionState>().gSessionHandleStart;
  if (session == nullptr || clientID == ClientID::None) return 0;
  for (; session->next != nullptr; session = session->next) {
    if (session->next->clientID != clientID) continue;
    freeSession(instance, unlinkNext(*session));
    announceRemoval(instance, SessionHandle::None);
    return 1;
  }
  return 0;
}

void DeleteAllQorvSessionHandleID(Instance& instance) {
  BIMSessionRec* session = instance.state<SessionState>().gSessionHandleStart;
  while (session != nullptr && session->next != nullptr) {
    BIMSessionRec* next = session->next;
    if (next->clientID != ClientID::None && next->appInput != 0) {
      DeleteSessionHandleID(instance, next->clientID);
    } else {
      session = next;
    }
  }
}

void Check_App_HouseKeeping(Instance& instance) {
  BIMSessionRec* session = instance.state<SessionState>().gSessionHandleStart;
  while (session != nullptr && session->next != nullptr) {
    const std::uint32_t signature = session->next->signature;
    if (signature != 0 && Get_signature_Process(instance, signature) == 0) {
      freeSession(instance, unlinkNext(*session));
    } else {
      session = session->next;
    }
  }
}

std::int32_t Get_signature_Process(Instance& instance, std::uint32_t signature) {
  ProcessManager& manager = instance.platform().processManager;
  ProcessSerialNumber psn;
  for (ProcessWalk walk(instance); walk.next(psn);) {
    ProcessInfoRec info;
    if (manager.GetProcessInformation(psn, info) != noErr) continue;
    if (info.processSignature == signature) return 1;
  }
  return 0;
}

std::uint32_t Get_Quorvane_App_Input(Instance& instance) {
  ToolRec record(instance);
  return record ? record.get(ToolCRecPtr_AppInput) : 0;
}

std::uint32_t Get_Reset_Quorvane_App_Input(Instance& instance) {
  ToolRec record(instance);
  if (!record) return 0;
  const std::uint32_t appInput = record.get(ToolCRecPtr_AppInput);
  if (appInput != 0) record.put(ToolCRecPtr_AppInput, 0);
  return appInput;
}

void Set_ToolSessionhandle(Instance& instance, const BIMSessionRec* session) {
  announceSession(instance, session->handle);
}

std::uint32_t Do_Check_Quorvane_App_Input(Instance& instance, ClientID clientID) {
  if (isQUORVANEAPP_FRONT(instance) != 0) return 1;
  const BIMSessionRec* head = instance.state<SessionState>().gSessionHandleStart;
  // The head isn't examined.
  for (const BIMSessionRec* session = head != nullptr ? head->next : nullptr; session != nullptr;
       session = session->next) {
    if (clientID != ClientID::None && session->clientID == clientID && session->appInput != 0)
      return 1;
  }
  return Get_Quorvane_App_Input(instance);
}

std::int32_t BIMSessionFix(BIMSessionRec* session) {
  if (session != nullptr) session->cursor = 0;
  return 0;
}

}  // namespace quorvane
