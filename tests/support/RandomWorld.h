#pragma once
// One life of the input method among random keys and clients and beside a main application, told to
// the model. The law: each event, typed or posted, is passed on or taken as the model says, exactly
// once and in order; documents, sessions and what the two processes share are as the model has them
// after each.

#include <algorithm>
#include <sstream>

#include "tests/support/RandomMainApplication.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane::model {

/// Stands before the controller.
class RandomWorld : private IMKInputController {
 public:
  explicit RandomWorld(std::uint64_t seed) : random_(seed) {
    host_.journal.setRecording(false);
    host_.log.enabled = random_.chance(200);
    host_.log.limit = host_.console.limit = 100;
    host_.text.trace = [this](const field::EventReport& report) { onReport(report); };
    host_.text.setController(this);
    if (random_.chance(500)) {
      host_.textServicesManager.activeDocument = 77;
      host_.textServicesManager.documentProperties[77]["dapy"_4cc] = 5;
    }
    while (random_.chance(500)) mainApplication_.sendFix();
    host_.text.focus(random_.chance(500) ? nullptr : &method_.document);
  }

  /// Delivers so many key events, fewer where the law is broken.
  void run(std::uint64_t keys) {
    while (keys_ < keys && breach_.empty()) step();
  }
  [[nodiscard]] std::uint64_t keys() const { return keys_; }
  /// The first breach; empty: none.
  [[nodiscard]] const std::string& breach() const { return breach_; }
  [[nodiscard]] const std::map<std::string, int>& reached() const { return model_.reached; }

 private:
  static constexpr std::size_t kTidyAbove = 3000;
  static constexpr std::size_t kDocumentLimit = 6;
  static constexpr std::uint64_t kHalfSecond = 500'000'000;

  // What happens.

  void step() {
    const std::uint32_t dice = random_.below(1000);
    if (dice < 910) {
      key();
    } else if (dice < 925) {
      const auto documents = host_.text.documents();
      host_.text.focus(random_.chance(50) ? nullptr : random_.oneOf(documents).get());
    } else if (dice < 935) {
      mouse();
    } else if (dice < 955) {
      mainApplication_.sendMessage();
    } else if (dice < 980) {
      mainApplication_.setState();
    } else if (dice < 987) {
      mainApplication_.chooseScanAnswer();
    } else if (dice < 988) {
      applications();
    } else if (dice < 990) {
      switches();
    } else {
      documents();
    }
    if (random_.chance(700)) turn();
    compareDocuments();
  }

  void key() {
    if (random_.chance(2)) habit_ = static_cast<Habit>(random_.below(4));
    if (random_.chance(200)) {
      const std::uint64_t now = host_.clock.now();
      const std::uint64_t then = began_ + kHalfSecond + (random_.chance(500) ? 1 : -1);
      host_.clock.advance(then > now ? then - now : random_.below(2 * kHalfSecond));
    }
    deliver(randomKey(random_, habit_), !random_.chance(20));
  }

  void mouse() {
    if (!host_.text.focused()) return;
    withEventRef_ = true;
    NSEvent event;
    event.type = random_.chance(200) ? NSEventType::OtherMouseDown : NSEventType::LeftMouseDown;
    if (event.type == NSEventType::OtherMouseDown) return deliver(event, true);
    expected_.push_back(event);
    event.type = NSEventType::LeftMouseUp;
    expected_.push_back(event);
    clickIndex_ = random_.below(200);
    host_.clock.advance(kHalfSecond);
    do {
      turn();
    } while (mainApplication_.hasSent());
    const std::size_t client = model_.active;
    const bool ready = model_.fields[kReady] != 0;
    host_.text.click(clickIndex_);
    if (random_.chance(300)) host_.text.focus(random_.oneOf(host_.text.documents()).get());
    host_.clock.advance(1);
    host_.messagePorts.runPending();
    if (ready) model_.clicked(client);
    compareSession();
  }

  void documents() {
    if (model_.documents.size() < kDocumentLimit && random_.chance(300)) {
      host_.text.addDocument();
      model_.addClient(host_.textServicesManager.activeDocument != 0);
    }
    if (model_.documents.size() > 2 && random_.chance(20)) {
      const std::size_t which = random_.below(static_cast<std::uint32_t>(model_.documents.size()));
      host_.text.documents()[which]->close();
      model_.documents[which].close();
    }
  }

  // One begins, or ends: the main one, or another, which is nobody's business.
  void applications() {
    memory::MemoryProcesses& processes = host_.processes;
    if (random_.chance(300)) {
      mainApplication_.restart();
    } else if (other_ && random_.chance(500)) {
      processes.remove(*std::exchange(other_, {}));
    } else {
      other_ = processes.add({{}, 0, "Other", random_.word(), "APPL"_4cc, 0, "x", false});
    }
    turn();
  }

  // Never with word completion: what it puts into a document is no business of the model.
  void switches() {
    model_.switches =
        random_.oneOf(std::array{0x11833U, 0x11833U, 0x11833U, 0x1800U, 0x11831U, 0x1U, 0x10000U});
    method_.instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = model_.switches;
  }

  void turn() {
    host_.processes.deliverNotifications();
    host_.messagePorts.runPending();
    mainApplication_.tellArrived();
    compareSession();
    if (!host_.text.focused()) model_.posted.clear();
    host_.text.deliverPosted();
    checkNonePosted();
  }

  void deliver(const NSEvent& event, bool withEventRef) {
    if (isKey(event)) ++keys_;
    if (host_.text.focused()) expected_.push_back(event);
    withEventRef_ = withEventRef;
    host_.text.deliver(event, {withEventRef, random_.chance(50)});
    if (!expected_.empty()) broken("not reported", event);
    checkNonePosted();
  }

  // The way to the controller.

  bool handleEvent(const NSEvent& event, IMKTextInput* client) override {
    if (inside_) broken("delivered within another event", event);
    const FlagGuard inside(inside_);
    began_ = host_.clock.now();
    return method_.controller.handleEvent(event, client);
  }
  void activateServer(IMKTextInput* sender) override {
    method_.controller.activateServer(sender);
    model_.activate(indexOf(sender));
  }
  void deactivateServer(IMKTextInput* sender) override {
    method_.controller.deactivateServer(sender);
  }
  void commitComposition(IMKTextInput* sender) override {
    method_.controller.commitComposition(sender);
  }
  std::uint32_t recognizedEvents(IMKTextInput* sender) override {
    return method_.controller.recognizedEvents(sender);
  }

  // What must come of it.

  void onReport(const field::EventReport& report) {
    const NSEvent& event = report.event;
    checkOrder(event, report.posted ? model_.posted : expected_);
    if (!report.posted) checkNonePosted();
    model_.begin(indexOf(host_.text.focusedClient()));
    const bool seen =
        isKey(event) && (report.posted || withEventRef_ || event.type == NSEventType::FlagsChanged);
    const bool taken = seen && model_.takes(event, began_);
    if (!seen) model_.leftBehind(event);
    if (report.outcome != (taken ? field::Outcome::Consumed : field::Outcome::PassedOn)) {
      broken(field::describe(report.outcome), event);
    }
    if (std::exchange(model_.askedWrongly, false) || !model_.answers.empty()) {
      broken("asked something else", event);
    }
    if (!taken) {
      field::Document& document = model_.documents[model_.active];
      document.applyKey(event);
      if (event.type == NSEventType::LeftMouseDown) document.select({clickIndex_, 0});
    }
    compareSession();
  }

  void checkOrder(const NSEvent& event, std::deque<NSEvent>& wanted) {
    const bool inOrder = !wanted.empty() && wanted.front().type == event.type &&
                         wanted.front().modifierFlags == event.modifierFlags &&
                         wanted.front().characters == event.characters;
    if (!inOrder) return broken("out of order", event);
    wanted.pop_front();
  }

  void checkNonePosted() {
    if (!model_.posted.empty()) broken("did not come back", model_.posted.front());
  }

  void compareDocuments() {
    const auto shown = [](const field::Document& document) {
      const auto [location, length] = document.selection();
      return toUtf8(document.text()) + "\n  selected " + std::to_string(location) + " " +
             std::to_string(length) + (document.markedRange() ? ", marked" : "");
    };
    for (std::size_t i = 0; i < model_.documents.size(); ++i) {
      field::Document& document = *host_.text.documents()[i];
      compare("a document", shown(document), shown(model_.documents[i]));
      if (document.text().size() <= kTidyAbove) continue;
      document.setText(u"tidy ");
      model_.documents[i].setText(u"tidy ");
    }
  }

  void compareSession() {
    const SessionModel& session = model_.sessions[model_.active];
    compare("the session", method_.sessionText(), session.text());
    compare("its cursor", method_.session().cursor, session.cursor);
    if (session.length == 384) ++model_.reached["full sessions"];
    for (const auto& [field, wanted] : model_.fields) {
      compare("field " + std::to_string(field), host_.mainApplication.field(field), wanted);
    }
    const memory::PublishedText published = host_.mainApplication.published();
    compare("the text record", published.text, model_.text.text());
    compare("its cursor", published.cursor, model_.text.cursor);
    compare("its length", published.length, model_.text.length);
    compare("its key", published.keyByte, model_.publishedKey);
  }

  template <class Value>
  void compare(std::string_view what, const Value& value, const Value& wanted) {
    if (value == wanted || !breach_.empty()) return;
    std::ostringstream text;
    text << "key " << keys_ << ": " << what << " is\n  " << value << "\nand not\n  " << wanted;
    breach_ = text.str();
  }

  void broken(std::string_view what, const NSEvent& event) {
    if (!breach_.empty()) return;
    std::ostringstream text;
    text << "key " << keys_ << ": " << what << ": event type "
         << static_cast<std::uint32_t>(event.type) << ", modifiers " << event.modifierFlags
         << ", characters " << toUtf8(event.characters);
    breach_ = text.str();
  }

  [[nodiscard]] std::size_t indexOf(const IMKTextInput* client) const {
    const auto all = host_.text.documents();
    const auto found =
        std::ranges::find(all, client, [&](const auto& one) { return &host_.text.clientOf(*one); });
    return static_cast<std::size_t>(found - all.begin());
  }

  static bool isKey(const NSEvent& event) {
    return event.type == NSEventType::KeyDown || event.type == NSEventType::KeyUp ||
           event.type == NSEventType::FlagsChanged;
  }

  Random random_;
  test::StartedInputMethod method_;
  memory::MemoryHost& host_{method_.host};
  InputMethodModel model_;
  RandomMainApplication mainApplication_{random_, host_, model_};
  std::optional<ProcessSerialNumber> other_;  ///< another application
  Habit habit_ = Habit::Mixed;
  std::uint64_t keys_ = 0;
  std::string breach_;

  std::deque<NSEvent> expected_;  ///< delivered, not yet reported
  bool withEventRef_ = true;
  bool inside_ = false;
  std::uint64_t began_ = 0;  ///< when the latest event did, in nanoseconds
  std::size_t clickIndex_ = 0;
};

}  // namespace quorvane::model
