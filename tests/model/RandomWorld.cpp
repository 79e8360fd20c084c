#include "tests/model/RandomWorld.h"

#include <algorithm>
#include <utility>

#include "src/base/Text.h"

namespace quorvane::model {
namespace {

constexpr std::size_t kTidyAbove = 3000;
constexpr std::size_t kDocumentLimit = 6;
constexpr std::uint64_t kFaultAfter = 500;

bool isPlainLetter(const NSEvent& event) {
  return event.type == NSEventType::KeyDown && event.modifierFlags == 0 &&
         event.characters.size() == 1 && event.characters[0] >= u'a' && event.characters[0] <= u'z';
}

std::string describe(const NSEvent& event) {
  std::string text = "event type " + std::to_string(static_cast<std::uint32_t>(event.type)) +
                     ", modifiers " + std::to_string(event.modifierFlags) + ", characters";
  for (const char16_t unit : event.characters) text.append(" ").append(std::to_string(unit));
  return text;
}

std::vector<std::uint8_t> bigEndian(std::uint32_t value) {
  return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
          static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

bool changesText(const std::string& clientCall) {
  return clientCall.starts_with("insertText") || clientCall.starts_with("setMarkedText");
}

}  // namespace

class RandomWorld::Gate : public IMKInputController {
 public:
  Gate(RandomWorld& world, Fault fault) : world_(world), fault_(fault) {}

  bool handleEvent(const NSEvent& event, IMKTextInput* client) override {
    const bool due = world_.keys_ > kFaultAfter && isPlainLetter(event) &&
                     !static_cast<field::Document*>(client)->closed();
    const bool twoLetters = due && isPlainLetter(last_) && lastClient_ == client;
    last_ = event;
    lastClient_ = client;
    if (fault_ == Fault::Swapped ? twoLetters : due) return plant(event, client);
    return handle(event, client);
  }
  void activateServer(IMKTextInput* sender) override {
    world_.method_.controller.activateServer(sender);
    world_.active_ = world_.indexOf(sender);
  }
  void deactivateServer(IMKTextInput* sender) override {
    world_.method_.controller.deactivateServer(sender);
  }
  std::uint32_t recognizedEvents(IMKTextInput* sender) override {
    return world_.method_.controller.recognizedEvents(sender);
  }

 private:
  bool handle(const NSEvent& event, IMKTextInput* client) {
    return world_.method_.controller.handleEvent(event, client);
  }

  // Once; then there is no fault any more.
  bool plant(const NSEvent& event, IMKTextInput* client) {
    const auto* session = BIMGetActiveSession(world_.method_.process);
    const std::uint32_t lengthBefore = session ? session->length : 0;
    const bool consumed = handle(event, client);
    const bool tookIt = session && session->length == lengthBefore + 1;
    if (fault_ == Fault::HandledTwice && !tookIt) return consumed;
    const Fault fault = std::exchange(fault_, Fault::None);
    if (fault == Fault::Doubled) client->insertText(event.characters, {NSNotFound, NSNotFound});
    if (fault == Fault::HandledTwice) handle(event, client);
    if (fault == Fault::Swapped) {
      client->insertText(event.characters, {client->selectedRange().location - 1, 0});
    }
    return consumed || fault == Fault::Lost || fault == Fault::Swapped;
  }

  RandomWorld& world_;
  Fault fault_;
  NSEvent last_;
  IMKTextInput* lastClient_ = nullptr;
};

RandomWorld::RandomWorld(std::uint64_t seed, Fault fault)
    : random_(seed),
      honest_(fault != Fault::None || random_.chance(500)),
      method_(honest_ || random_.chance(400)),
      gate_(std::make_unique<Gate>(*this, fault)) {
  host_.journal.setRecording(false);
  host_.log.enabled = random_.chance(200);
  host_.log.limit = host_.console.limit = 100;
  host_.text.trace = [this](const field::EventReport& report) { onReport(report); };
  documents_.emplace_back();
  sessions_.emplace_back();
  host_.text.setController(gate_.get());
  if (random_.chance(500)) {
    host_.textServicesManager.activeDocument = 77;
    host_.textServicesManager.documentProperties[77]["dapy"_4cc] = 5;
  }
  while (random_.chance(500)) sendFix();
  host_.text.focus(random_.chance(500) ? nullptr : &method_.document);
}

RandomWorld::~RandomWorld() = default;

void RandomWorld::run(std::uint64_t keys) {
  while (keys_ < keys && breach_.empty()) step();
}

void RandomWorld::step() {
  const std::uint32_t dice = random_.below(1000);
  if (dice < 910) {
    key();
  } else if (dice < 925) {
    focus();
  } else if (dice < 935) {
    mouse();
  } else if (dice < 960) {
    message();
  } else if (dice < 975) {
    disturb();
  } else if (dice < 985) {
    scanAnswer();
  } else if (dice < 990) {
    host_.clock.advanceTicks(random_.below(90));
  } else if (dice < 993) {
    switches();
  } else {
    documents();
  }
  if (random_.chance(700)) turn();
  compareDocuments();
}

// --- What happens ------------------------------------------------------------------------------

void RandomWorld::key() {
  if (random_.chance(2)) habit_ = static_cast<Habit>(random_.below(3));
  deliver(randomKey(random_, habit_), !random_.chance(20));
}

void RandomWorld::mouse() {
  if (!host_.text.focused()) return;
  withEventRef_ = true;
  NSEvent event;
  event.type = random_.chance(200) ? NSEventType::OtherMouseDown : NSEventType::LeftMouseDown;
  if (event.type == NSEventType::OtherMouseDown) return deliver(event, true);
  expected_.push_back(event);
  event.type = NSEventType::LeftMouseUp;
  expected_.push_back(event);
  clickIndex_ = random_.below(200);
  host_.text.click(clickIndex_);
}

void RandomWorld::focus() {
  const auto documents = host_.text.documents();
  host_.text.focus(random_.chance(50) ? nullptr : random_.oneOf(documents).get());
}

void RandomWorld::documents() {
  if (documents_.size() < kDocumentLimit && random_.chance(300)) {
    host_.text.addDocument();
    documents_.emplace_back();
    sessions_.emplace_back();
  }
  if (documents_.size() > 2 && random_.chance(20)) {
    const std::size_t which = random_.below(static_cast<std::uint32_t>(documents_.size()));
    host_.text.documents()[which]->close();
    documents_[which].closed = true;
  }
}

void RandomWorld::disturb() {
  if (honest_) return;
  if (random_.chance(300)) {
    mainApplication();
  } else {
    scribble();
  }
}

void RandomWorld::mainApplication() {
  auto& main = host_.mainApplication;
  const auto notice = random_.chance(600) ? memory::Notice::Queued : memory::Notice::Missed;
  if (!main.running()) {
    main.segmentOptions.clear();
    const std::uint32_t odd = random_.chance(300) ? random_.oneOf(std::array{880U, 893U}) : 0;
    if (odd != 0) main.segmentOptions[odd].stranger = true;
    main.launch(notice);
  } else if (random_.chance(300)) {
    main.vanish(notice,
                random_.chance(500) ? memory::SegmentFate::Kept : memory::SegmentFate::Removed);
  } else if (random_.chance(300)) {
    main.bringToFront(notice);
  } else {
    host_.processes.setFront(memory::MemoryProcesses::editor(), notice);
  }
}

void RandomWorld::scanAnswer() {
  memory::Answer answer;
  answer.action = [this] { answerScan(); };
  if (honest_) {
    answer.afterTicks = random_.oneOf(std::array{0.0, 1.5});
  } else if (random_.chance(200)) {
    answer.afterTicks = std::nullopt;
  } else {
    answer.afterTicks = random_.oneOf(std::array{0.0, 5.0, 20.0});
    answer.evenIfTakenBack = random_.chance(300);
  }
  host_.mainApplication.answerScan(answer);
}

void RandomWorld::answerScan() {
  ++reached_["scans"];
  if (random_.chance(300)) writeText();
  if (random_.chance(300)) sendFix();
  if (!honest_ && random_.chance(20)) scribble();
}

void RandomWorld::scribble() {
  if (random_.chance(300)) return writeText();
  const std::uint32_t field = random_.oneOf(std::array{9U, 19U, 19U, 22U, random_.below(77)});
  if (random_.chance(700)) {
    return writeWord(880, 68 + 4 * field, random_.chance(800) ? random_.below(12) : random_.word());
  }
  std::vector<std::uint8_t> bytes(random_.below(40));
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random_.word());
  write(random_.oneOf(std::array{880U, 893U, 893U, 896U, 897U, 899U}), random_.below(420), bytes);
}

// Never with word completion: what it puts into a document is no business of the model.
void RandomWorld::switches() {
  method_.process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS =
      random_.oneOf(std::array{0x11833U, 0x11833U, 0x11833U, 0x1800U, 0x11831U, 0x1U, 0x10000U});
}

void RandomWorld::writeText() {
  WrittenText text;
  text.cursor = random_.chance(100) ? random_.word() : random_.below(390);
  text.length = random_.chance(800) ? text.cursor : text.cursor + random_.below(50);
  text.bytes.assign(384, 'w');
  for (std::size_t i = 0; i < 384; i += 1 + random_.below(9)) text.bytes[i] = ' ';
  writeWord(893, 0, text.cursor);
  writeWord(893, 4, text.length);
  write(893, 8, {text.bytes.begin(), text.bytes.end()});
  writeWord(880, 68 + 4 * 11, 1);
  written_ = std::move(text);
}

void RandomWorld::write(std::uint32_t key, std::size_t offset,
                        const std::vector<std::uint8_t>& bytes) {
  host_.sharedMemory.write(host_.mainApplication.segment(key), offset, bytes);
}

void RandomWorld::writeWord(std::uint32_t key, std::size_t offset, std::uint32_t value) {
  write(key, offset, bigEndian(value));
}

void RandomWorld::message() {
  if (random_.chance(700)) return sendFix();
  Message garbage;
  garbage.id = static_cast<std::int32_t>(
      random_.oneOf(std::array{"Updt"_4cc, "Updt"_4cc, "gInt"_4cc, "gMen"_4cc, "oMen"_4cc, 202U,
                               220U, 230U, 240U, 250U, 251U, 7U, 0xFFFFFFFFU}));
  if (random_.chance(800)) garbage.data = CFData(random_.below(4), 0xEE);
  send(std::move(garbage));
}

void RandomWorld::sendFix() {
  Message fix;
  fix.id = 202;
  fix.count = random_.chance(50) ? random_.word() : random_.below(12) * random_.below(2);
  fix.text = randomText(random_);
  fix.data = bigEndian(fix.count);
  const std::string bytes = toUtf8(*fix.text);
  fix.data->insert(fix.data->end(), bytes.begin(), bytes.end());
  if (random_.chance(50)) {
    fix.data->push_back(0xFF);
    fix.text.reset();
  }
  send(std::move(fix));
}

void RandomWorld::send(Message message) {
  if (host_.mainApplication.sendMessage(message.id, message.data)) {
    sent_.push_back(std::move(message));
  }
}

// --- What must come of it ------------------------------------------------------------------------

void RandomWorld::turn() {
  host_.processes.deliverNotifications();
  host_.messagePorts.runPending();
  for (; !sent_.empty(); sent_.pop_front()) arrived(sent_.front());
  compareSession();
  host_.text.deliverPosted();
}

void RandomWorld::arrived(const Message& message) {
  if (message.id != 202 || !message.text) return;
  if (!lastClient_) {
    parked_ = {message.count, *message.text};
  } else {
    const bool landed = documents_[*lastClient_].fix(message.count, *message.text);
    ++reached_[landed ? "fixes landed" : "counts refused"];
  }
}

void RandomWorld::deliver(const NSEvent& event, bool withEventRef) {
  const bool isKey = event.type == NSEventType::KeyDown || event.type == NSEventType::KeyUp ||
                     event.type == NSEventType::FlagsChanged;
  if (isKey) ++keys_;
  if (host_.text.focused()) expected_.push_back(event);
  withEventRef_ = withEventRef;
  host_.text.deliver(event, {withEventRef, random_.chance(50)});
  if (!expected_.empty()) broken("not reported: " + describe(event));
}

void RandomWorld::onReport(const field::EventReport& report) {
  const NSEvent& event = report.event;
  if (!report.posted) {
    const bool inOrder = !expected_.empty() && expected_.front().type == event.type &&
                         expected_.front().characters == event.characters;
    if (!inOrder) return broken("out of order: " + describe(event));
    expected_.pop_front();
  }
  const std::size_t client = indexOf(host_.text.focused());
  lastClient_ = active_ = client;
  if (parked_) {
    documents_[client].parkedFix(parked_->count, parked_->text);
    parked_.reset();
    ++reached_["parked fixes"];
  }
  const bool isTyped = event.type == NSEventType::KeyDown && (report.posted || withEventRef_);
  if (isTyped) sessions_[client].key(event);
  if (written_) {
    sessions_[client].take(*written_);
    ++reached_[written_->possible() ? "texts taken back" : "impossible texts"];
  }
  written_.reset();
  if (report.outcome == field::Outcome::PassedOn) {
    documents_[client].key(event, clipboard_);
    if (event.type == NSEventType::LeftMouseDown) documents_[client].click(clickIndex_);
  } else if (report.outcome != field::Outcome::Consumed) {
    broken("the controller threw at " + describe(event));
  } else if (std::none_of(report.clientCalls.begin(), report.clientCalls.end(), changesText)) {
    broken("consumed, and nothing names why: " + describe(event));
  }
  compareSession();
}

std::size_t RandomWorld::indexOf(const IMKTextInput* client) const {
  const auto all = host_.text.documents();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const auto& document) { return document.get() == client; });
  return static_cast<std::size_t>(found - all.begin());
}

void RandomWorld::compareDocuments() {
  for (std::size_t i = 0; i < documents_.size(); ++i) compareDocument(i);
}

void RandomWorld::compareDocument(std::size_t which) {
  field::Document& document = *host_.text.documents()[which];
  DocumentModel& model = documents_[which];
  if (document.text() != model.text) {
    broken("document " + std::to_string(which) + " holds\n  " + toUtf8(document.text()) +
           "\nand not\n  " + toUtf8(model.text));
  }
  const NSRange selection{model.from, model.to - model.from};
  if (document.markedRange() || (!model.closed && document.selection() != selection)) {
    broken("the selection of document " + std::to_string(which));
  }
  if (document.text().size() > kTidyAbove && !model.closed) {
    document.setText(u"tidy ");
    model.text = u"tidy ";
    model.from = model.to = 5;
  }
}

void RandomWorld::compareSession() {
  if (!honest_) return;
  const BIMSessionRec& real = method_.session();
  const SessionModel& model = sessions_[active_];
  const std::string bytes(real.sessionText->begin(), real.sessionText->begin() + real.length);
  if (real.cursor != model.cursor || bytes != model.text()) {
    broken("the session holds\n  " + bytes + " " + std::to_string(real.cursor) + "\nand not\n  " +
           model.text() + " " + std::to_string(model.cursor));
  }
  if (real.length == 384) ++reached_["full sessions"];
  for (const unsigned busy : {16, 22, 54}) {
    const std::uint32_t value = host_.mainApplication.field(busy);
    if (value != 0) broken("field " + std::to_string(busy) + " is " + std::to_string(value));
  }
}

void RandomWorld::broken(const std::string& what) {
  if (breach_.empty()) breach_ = "key " + std::to_string(keys_) + ": " + what;
}

}  // namespace quorvane::model
