#pragma once
// One life of the input method among random keys, clients and a main application that does what it
// likes, told to the models beside it. The law: each key is passed on, or consumed by something
// that its trace names, exactly once and in order; the documents and the sessions are as the models
// have them.

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "tests/model/DocumentModel.h"
#include "tests/model/RandomKeys.h"
#include "tests/model/SessionModel.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane::model {

/// A fault between the host and the controller; the law must notice it.
enum class Fault { None, Lost, Doubled, HandledTwice, Swapped };

class RandomWorld {
 public:
  explicit RandomWorld(std::uint64_t seed, Fault fault = Fault::None);
  ~RandomWorld();
  RandomWorld(const RandomWorld&) = delete;
  RandomWorld& operator=(const RandomWorld&) = delete;

  /// Delivers so many key events, fewer where the law is broken.
  void run(std::uint64_t keys);
  [[nodiscard]] std::uint64_t keys() const { return keys_; }
  /// The first breach; empty: none.
  [[nodiscard]] const std::string& breach() const { return breach_; }
  [[nodiscard]] const std::map<std::string, int>& reached() const { return session_.reached; }

 private:
  /// Stands before the controller.
  class Gate;
  struct Message {
    std::int32_t id = 0;
    std::optional<CFData> data;
    std::uint32_t count = 0;
    std::optional<std::u16string> text;  ///< empty: in no encoding
  };
  struct Parked {
    std::uint32_t count = 0;
    std::u16string text;
  };

  void step();
  void key();
  void mouse();
  void focus();
  void documents();
  void mainApplication();
  void scanAnswer();
  void scribble();
  void switches();
  void message();
  void turn();

  void deliver(const NSEvent& event, bool withEventRef);
  void onReport(const field::EventReport& report);
  void arrived(const Message& message);
  void send(Message message);
  void sendFix();
  void write(std::uint32_t key, std::size_t offset, std::vector<std::uint8_t> bytes);
  void writeWord(std::uint32_t key, std::size_t offset, std::uint32_t value);
  void writeText();
  void lie();

  [[nodiscard]] static std::uint32_t idOf(const IMKTextInput* client);
  DocumentModel& modelOf(const IMKTextInput* client);
  void compareDocuments();
  void compareSession();
  void broken(const std::string& what);

  Random random_;
  test::StartedInputMethod method_;
  memory::MemoryHost& host_{method_.host};
  std::unique_ptr<Gate> gate_;
  SessionModel session_;
  std::deque<DocumentModel> documents_;  ///< in the order of the host's
  std::u16string clipboard_;
  Habit habit_ = Habit::Mixed;
  std::uint64_t keys_ = 0;
  std::string breach_;

  std::deque<NSEvent> expected_;  ///< delivered, not yet reported
  bool withEventRef_ = true;
  bool inEvent_ = false;
  std::size_t clickIndex_ = 0;
  IMKTextInput* lastClient_ = nullptr;  ///< of the latest event: fixes go there
  std::optional<Parked> parked_;
  std::deque<Message> sent_;
};

}  // namespace quorvane::model
