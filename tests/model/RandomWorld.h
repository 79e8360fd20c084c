#pragma once
// One life of the input method among random keys and clients, told to the models beside it. The
// law: each key is passed on, or consumed by something that its trace names, exactly once and in
// order; the documents are as their models have them. Beside an honest main application so are the
// sessions; a dishonest one comes, goes and writes what it likes, and the law holds all the same.

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/model/DocumentModel.h"
#include "tests/model/RandomKeys.h"
#include "tests/model/SessionModel.h"
#include "tools/support/StartedInputMethod.h"

namespace quorvane::model {

/// A fault between the host and the controller, beside an honest main application; the law must
/// notice it.
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
  [[nodiscard]] const std::map<std::string, int>& reached() const { return reached_; }

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
  void disturb();
  void scanAnswer();
  void answerScan();
  void scribble();
  void switches();
  void message();
  void turn();

  void deliver(const NSEvent& event, bool withEventRef);
  void onReport(const field::EventReport& report);
  void arrived(const Message& message);
  void send(Message message);
  void sendFix();
  void write(std::uint32_t key, std::size_t offset, const std::vector<std::uint8_t>& bytes);
  void writeWord(std::uint32_t key, std::size_t offset, std::uint32_t value);
  void writeText();

  [[nodiscard]] std::size_t indexOf(const IMKTextInput* client) const;
  void compareDocuments();
  void compareDocument(std::size_t which);
  void compareSession();
  void broken(const std::string& what);

  Random random_;
  bool honest_;  ///< the main application
  test::StartedInputMethod method_;
  memory::MemoryHost& host_{method_.host};
  std::unique_ptr<Gate> gate_;
  std::deque<DocumentModel> documents_;  ///< in the order of the host's
  std::deque<SessionModel> sessions_;    ///< in the same order
  std::size_t active_ = 0;               ///< the session that keys go to
  std::optional<WrittenText> written_;   ///< during the last scan
  std::u16string clipboard_;
  Habit habit_ = Habit::Mixed;
  std::uint64_t keys_ = 0;
  std::string breach_;
  std::map<std::string, int> reached_;  ///< how often the rarer rules were reached

  std::deque<NSEvent> expected_;  ///< delivered, not yet reported
  bool withEventRef_ = true;
  std::size_t clickIndex_ = 0;
  std::optional<std::size_t> lastClient_;  ///< of the latest event: fixes go there
  std::optional<Parked> parked_;
  std::deque<Message> sent_;
};

}  // namespace quorvane::model
