#pragma once
// What the input method must remember of each client's typing, and of the main application: a naive
// account that reads the platform and the shared segments as any third party could.

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "hosts/memory/MemoryHost.h"

namespace quorvane::model {

struct Session {
  std::string bytes = std::string(385, '\0');
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;
  std::uint32_t editState = 0;
  std::uint32_t client = 0;
  std::uint32_t appInput = 0;
  std::uint32_t tag = 0;     ///< of its document
  std::uint32_t handle = 0;  ///< sessions are numbered as they are made
};

/// Something that the main application wrote into a segment.
struct Write {
  int segment = 0;
  std::size_t offset = 0;
  std::vector<std::uint8_t> bytes;
};

class SessionModel {
 public:
  /// The input method has started, its two first sessions are made, nothing is active.
  SessionModel(memory::MemoryHost& host, std::uint32_t appFlags);

  /// Looks at the segments as an event or a message will find them.
  void observe();
  void activated(std::uint32_t client);
  void event(const NSEvent& event, bool withEventRef, std::uint32_t client);
  /// Message 202. `decoded` false: its text was in no encoding; `direct`: a client is known.
  void fixArrived(bool decoded, bool direct);
  /// Message "Updt".
  void update();
  /// Message "gInt".
  void versionAsked() { attach(); }

  [[nodiscard]] const Session* active() const { return active_; }
  /// What differs in the shared fields that the model accounts for; empty: nothing.
  [[nodiscard]] std::string differenceInFields() const;

  std::uint32_t flags;                 ///< the switches
  std::uint32_t documentTag = 0;       ///< of the document in front, for sessions to come
  std::vector<Write> scanWrites;       ///< made by the main application during the event
  std::vector<int> unusable;           ///< segments that can't be attached
  std::map<std::string, int> reached;  ///< how often the rarer rules were reached

 private:
  [[nodiscard]] bool running();
  [[nodiscard]] bool mainInFront();
  [[nodiscard]] std::uint32_t frontSignature();
  void find();
  void launched(const ApplicationNotification& notification);
  void terminated(const ApplicationNotification& notification);
  void frontChanged(const ApplicationNotification& notification);
  [[nodiscard]] std::int32_t listedPid();

  void attach() {
    if (!segment_) segment_ = seen_;
  }
  [[nodiscard]] std::optional<int> usable(std::uint32_t key);
  [[nodiscard]] bool hasRecord() const { return seen_.has_value(); }
  [[nodiscard]] std::uint32_t field(std::size_t i) const { return word(tool_, 68 + 4 * i); }
  void setField(std::size_t i, std::uint32_t value) { setWord(tool_, 68 + 4 * i, value); }
  static std::uint32_t word(const std::vector<std::uint8_t>& bytes, std::size_t offset);
  static void setWord(std::vector<std::uint8_t>& bytes, std::size_t offset, std::uint32_t value);

  Session& make(std::uint32_t client);
  void lookup(std::uint32_t client);
  void sessionEvent(const NSEvent& event);
  void handleInput(std::uint8_t key);
  void makeRoom(Session& session);
  void insert(Session& session, std::uint8_t key);
  static void erase(Session& session);
  static void forget(Session& session);
  void interactive(Session& session, std::uint8_t key);
  void publish(Session& session, std::uint8_t key);
  void updateFrom(Session& session);

  memory::MemoryHost& host_;
  std::vector<std::unique_ptr<Registration>> observers_;
  ProcessSerialNumber psn_;
  std::int32_t pid_ = 0;
  std::int32_t frontPid_ = 0;
  std::uint32_t frontSignature_ = 0;
  std::optional<int> segment_;      ///< the tool record that is attached
  std::optional<int> seen_;         ///< the one that `observe` saw
  std::optional<int> textSegment_;  ///< the text record that would be attached
  std::vector<std::uint8_t> tool_;
  std::vector<std::uint8_t> text_;
  std::deque<Session> list_;
  std::deque<Session> unlisted_;
  Session* active_ = nullptr;
  std::uint32_t made_ = 0;
};

}  // namespace quorvane::model
