#include "tools/scenario/World.h"

#include <array>
#include <cstring>
#include <utility>

#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/SharedLayout.h"
#include "src/shell/main.h"

namespace quorvane::scenario {
namespace {

constexpr std::size_t kRecordLimit = 1'000'000;

using Lines = std::vector<std::string>;

Lines toLines(const std::deque<std::string>& lines) { return {lines.begin(), lines.end()}; }

std::uint32_t hostWord(const CFData& data, std::size_t offset) {
  std::uint32_t word = 0;
  if (offset + sizeof word <= data.size()) std::memcpy(&word, data.data() + offset, sizeof word);
  return word;
}

// `104 to server, command 104 from 'WRTR', waiting`; `'gMen' to pencil-menu from 0 8192`.
std::string describe(const memory::SentMessage& message) {
  std::string text = describeCode(static_cast<std::uint32_t>(message.id)) + " to ";
  if (message.port == kBasicMenuletPortName) {
    return text + "pencil-menu from " + std::to_string(hostWord(message.data, 24)) + " " +
           std::to_string(hostWord(message.data, 28));
  }
  text += message.port == kBasicAppPortName ? "server" : message.port;
  text += ", command " + describeCode(hostWord(message.data, 0)) + " from " +
          describeCode(hostWord(message.data, 12));
  return text + (message.waiting ? ", waiting" : "");
}

Lines sentMessages(World& world) {
  Lines lines;
  for (const auto& message : world.host.messagePorts.sent()) lines.push_back(describe(message));
  return lines;
}

Lines postedEvents(World& world) {
  Lines lines;
  for (std::string& line : world.host.journal.lines()) {
    if (line.starts_with("IOHIDPostEvent") || line.starts_with("CGEventPost"))
      lines.push_back(std::move(line));
  }
  return lines;
}

struct Record {
  std::string_view name;
  Lines (*lines)(World&);
};
constexpr std::array<Record, 6> kRecords{{
    {"platform call", [](World& world) { return world.host.journal.lines(); }},
    {"client call", [](World& world) { return world.clientCalls; }},
    {"posted event", postedEvents},
    {"sent message", sentMessages},
    {"log line", [](World& world) { return toLines(world.host.log.lines); }},
    {"console line", [](World& world) { return toLines(world.host.console.lines); }},
}};

}  // namespace

World::World() {
  host.journal.setLimit(kRecordLimit);
  host.log.limit = kRecordLimit;
  host.console.limit = kRecordLimit;
  host.text.setController(&controller);
  host.text.onClientCall = [this,
                            recorded = host.text.onClientCall](const field::ClientCall& call) {
    if (recorded) recorded(call);
    noteClientCall(call);
  };
  applications["editor"] = memory::MemoryProcesses::editor();
  markedTime = host.clock.now();
}

void World::noteClientCall(const field::ClientCall& call) {
  clientCalls.push_back(field::describe(call));
  if (atClientCall && matches(atClientCall->pattern, clientCalls.back())) runHook(atClientCall);
}

void World::run(const Statement& statement) {
  const Statement* outer = std::exchange(current_, &statement);
  const auto keep = [&](std::vector<Failure>& where, const std::exception& error) {
    where.push_back({statement.line, statement.source, "", error.what()});
  };
  if (statement.watched) forgetRecords(*this);
  try {
    statement.pattern->handler(*this, statement.arguments);
  } catch (const BadStatement& error) {
    keep(errors, error);
  } catch (const std::exception& error) {
    keep(failures, error);
  }
  current_ = outer;
}

void World::runInside(const std::vector<Statement>& statements) {
  ++depth_;
  for (const Statement& statement : statements) run(statement);
  --depth_;
}

void World::setHook(std::optional<Hook>& hook, std::string pattern,
                    const std::vector<Statement>& statements) {
  if (hook) throw BadStatement("another waits for its call still");
  hook = Hook{current_->line, current_->source, std::move(pattern), statements};
}

void World::runHook(std::optional<Hook>& hook) {
  const Hook due = *std::exchange(hook, std::nullopt);
  runInside(due.statements);
}

void World::start(const std::vector<std::string>& arguments) {
  try {
    mainResult = InputMethodMain(instance, arguments);
  } catch (const std::exception& error) {
    startError = error.what();
  }
  settle();
}

void World::settle() {
  if (depth_ == 0) host.runPending();
}

void World::deliver(const NSEvent& event, const field::Delivery& how) {
  outcomes.push_back(host.text.deliver(event, how));
  settle();
}

void World::expect(bool holds, std::string expected, std::string found) {
  ++expectations;
  if (holds) return;
  failures.push_back({current_->line, current_->source, std::move(expected), std::move(found)});
}

void World::expectEqual(const std::string& expected, const std::string& found) {
  expect(expected == found, expected, found);
}

void World::expectNumber(std::int64_t expected, std::int64_t found) {
  expectEqual(std::to_string(expected), std::to_string(found));
}

std::vector<std::string> World::takeThrown() {
  const auto& all = host.text.errors();
  const std::size_t from = std::exchange(thrownSeen_, all.size());
  return {all.begin() + static_cast<std::ptrdiff_t>(from), all.end()};
}

void World::keepUnexpected() {
  for (const std::string& thrown : takeThrown()) {
    failures.push_back({0, "the text field reports", "", thrown});
  }
  if (startError) failures.push_back({0, "the start fails", "", *startError});
  for (const auto& hook : {atClientCall, beforePlatformCall}) {
    if (hook) failures.push_back({hook->line, hook->statement, "", "the call never came"});
  }
}

field::Document& World::document(const std::string& name) {
  field::Document*& document = documents[name];
  if (document == nullptr) document = &host.text.addDocument();
  return *document;
}

field::Document& World::knownDocument(const std::string& name) {
  if (!documents.contains(name)) throw BadStatement("there is no document " + name);
  return document(name);
}

field::Document& World::focused() {
  if (host.text.focused() == nullptr) throw BadStatement("no document has the focus");
  return *host.text.focused();
}

std::uint64_t World::place(const Argument& place) {
  const auto index = static_cast<std::uint64_t>(place.number);
  if (index > focused().text().size()) throw BadStatement("the text ends before " + place.word);
  return index;
}

void World::mustNotHaveStarted() const {
  if (mainResult) throw BadStatement("the input method has been started already");
}

memory::MemoryMainApplication& World::records() {
  const int record = host.mainApplication.segment(kToolCRecKey);
  if (host.sharedMemory.read(record, 0, 1).empty()) throw BadStatement("there is no tool record");
  return host.mainApplication;
}

ProcessSerialNumber World::application(const std::string& name) {
  const auto found = applications.find(name);
  if (found == applications.end()) throw BadStatement("there is no application " + name);
  return found->second;
}

BIMSessionRec* World::sessionOf(const std::string& documentName) {
  const field::Client& client = host.text.clientOf(knownDocument(documentName));
  const ClientID id = identityOf(&client);
  BIMSessionRec* session = instance.state<SessionState>().gSessionHandleStart;
  while (session != nullptr && session->clientID != id) session = session->next;
  return session;
}

BIMSessionRec* World::activeSession() { return instance.state<SessionState>().gActiveSession; }

std::vector<std::string> recordLines(World& world, const std::string& name) {
  for (const Record& record : kRecords) {
    if (record.name == name) return record.lines(world);
  }
  throw BadStatement("there is no record of \"" + name + "\"");
}

void forgetRecords(World& world) {
  for (const Record& record : kRecords) {
    world.seen[std::string(record.name)] = record.lines(world).size();
  }
  world.markedTime = world.host.clock.now();
}

}  // namespace quorvane::scenario
