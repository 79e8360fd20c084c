#include "src/session/QBIM_IMK_SessionRecord.h"

#include <algorithm>
#include <new>

#include "src/menu/MenuState.h"

namespace quorvane {

namespace {

void forgetRetired(SessionState& sessions) {
  if (sessions.users != 0 || sessions.retired.empty()) return;
  std::erase_if(sessions.retired,
                [&](const auto& record) { return record.get() != sessions.gActiveSession; });
}

}  // namespace

SessionsInUse::SessionsInUse(Instance& instance) : sessions_(instance.state<SessionState>()) {
  ++sessions_.users;
}

SessionsInUse::~SessionsInUse() {
  --sessions_.users;
  forgetRetired(sessions_);
}

BIMSessionRec* addRecord(SessionState& sessions) {
  std::unique_ptr<BIMSessionRec> record(new (std::nothrow) BIMSessionRec);
  if (!record) return nullptr;
  record->handle = SessionHandle{++sessions.lastHandle};
  return sessions.records.emplace_back(std::move(record)).get();
}

void freeSession(Instance& instance, BIMSessionRec* session) {
  auto& sessions = instance.state<SessionState>();
  const auto owner = std::find_if(sessions.records.begin(), sessions.records.end(),
                                  [&](const auto& record) { return record.get() == session; });
  if (owner == sessions.records.end()) return;
  session->sessionText.reset();
  session->next = nullptr;
  sessions.retired.push_back(std::move(*owner));
  sessions.records.erase(owner);
  forgetRetired(sessions);
}

ClientID identityOf(const IMKTextInput* client) {
  return static_cast<ClientID>(reinterpret_cast<std::uintptr_t>(client));
}

BIMSessionRec* findSession(Instance& instance, SessionHandle handle) {
  const auto& records = instance.state<SessionState>().records;
  const auto found = std::find_if(records.begin(), records.end(),
                                  [&](const auto& record) { return record->handle == handle; });
  return found == records.end() ? nullptr : found->get();
}

BIMSessionRec* BIMGetActiveSession(Instance& instance) {
  return instance.state<SessionState>().gActiveSession;
}

void BIM_Cancel_Session_Text(BIMSessionRec* session) {
  if (session == nullptr) return;
  session->appMark32 = 0;
  session->appMark30 = 0;
  session->sentenceFlags = 0;
}

void BIMMouseEditCancelSession(Instance& instance, BIMSessionRec* session) {
  if (session != nullptr) {
    if (session->cursor != 0) session->editState = kEditCancelled;
    session->cursor = 0;
    session->length = 0;
    BIM_Cancel_Session_Text(session);
  }
  SetMenuWhenAppChanges(instance);
}

void BIM_CancelSessionTextBuffer(Instance& instance, BIMSessionRec* session) {
  BIMMouseEditCancelSession(instance, session);
}

void losePlace(BIMSessionRec* session) {
  if (session != nullptr) session->place = session->length;
}

}  // namespace quorvane
