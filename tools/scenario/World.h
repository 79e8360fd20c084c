#pragma once
// What a scenario plays in: the input method on the memory host, the documents and applications
// that the scenario has named, and what has been observed.

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/memory/MemoryHost.h"
#include "src/completion/InputController.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "tools/parameters/ParameterFileInMemory.h"
#include "tools/scenario/CompletionData.h"
#include "tools/scenario/Statement.h"

namespace quorvane::scenario {

/// An expectation that doesn't hold, or a statement that couldn't be carried out.
struct Failure {
  std::size_t line = 0;
  std::string statement;
  std::string expected;
  std::string found;
};

inline constexpr std::string_view kUserDefaults =
    "commitWordWithSpace showTranslation verticalCandidate ShiftKeyToggle";

/// Statements that wait for a call, with the place that they are said at.
struct Hook {
  std::size_t line = 0;
  std::string statement;
  std::string pattern;  ///< of the call, where its text counts
  std::vector<Statement> statements;
};

class World {
 public:
  World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  /// Never throws: what goes wrong is kept in `failures` and `errors`.
  void run(const Statement& statement);
  /// Statements within a call of the input method on the platform.
  void runInside(const std::vector<Statement>& statements);
  /// One hook of a kind may wait at a time. Each must run, once.
  void setHook(std::optional<Hook>& hook, std::string pattern,
               const std::vector<Statement>& statements);
  void runHook(std::optional<Hook>& hook);
  /// The start of the input method, by `main`.
  void start(const std::vector<std::string>& arguments);
  /// A turn of the run loop, except inside a call.
  void settle();
  /// Hands an event over and notes what becomes of it.
  void deliver(const NSEvent& event, const field::Delivery& how = {});

  void expect(bool holds, std::string expected, std::string found);
  void expectEqual(const std::string& expected, const std::string& found);
  void expectNumber(std::int64_t expected, std::int64_t found);
  /// What was thrown into a key event since the last time, in order.
  std::vector<std::string> takeThrown();
  /// At the end: what was thrown and nobody expected becomes a failure, and so does a hook that
  /// never ran.
  void keepUnexpected();

  // By name. A document is made when something is first done with it; what isn't there throws
  // BadStatement.
  field::Document& document(const std::string& name);
  field::Document& knownDocument(const std::string& name);
  field::Document& focused();
  /// A place in the text of the document with the focus.
  std::uint64_t place(const Argument& place);
  /// Throws BadStatement once the input method has been started.
  void mustNotHaveStarted() const;
  /// The main application's records, which must be there.
  memory::MemoryMainApplication& records();
  ProcessSerialNumber application(const std::string& name);
  /// Null: the document has no session.
  BIMSessionRec* sessionOf(const std::string& documentName);
  BIMSessionRec* activeSession();
  memory::MemoryHost host;
  Instance instance{host.platform()};
  InputController controller{instance};

  std::map<std::string, field::Document*> documents;
  std::map<std::string, ProcessSerialNumber> applications;
  std::optional<int> mainResult;             ///< what `main` returned
  std::optional<std::string> startError;     ///< why the start has failed, until that is expected
  std::vector<field::Outcome> outcomes;      ///< of the last statement that pressed keys
  std::vector<std::string> clientCalls;      ///< as `field::describe` writes them
  std::optional<std::size_t> writingStyles;  ///< number of items got at the last request
  std::map<std::string, std::size_t> seen;   ///< lines of each record that are behind us
  std::uint64_t markedTime = 0;
  std::int64_t answer = 0;        ///< of the last question that gave one
  std::string folder;             ///< where the files that the scenario speaks of lie
  CompletionData completionData;  ///< what the scenario has said of single words
  parameters::CompletionFlags completionFlags;
  std::optional<Hook> atClientCall, beforePlatformCall;

  std::vector<Failure> failures;
  std::vector<Failure> errors;  ///< statements that can't be carried out
  std::size_t expectations = 0;

 private:
  void noteClientCall(const field::ClientCall& call);
  const Statement* current_ = nullptr;
  std::size_t thrownSeen_ = 0;
  int depth_ = 0;
};

/// A record of things in order, by its name in singular: "platform call", "client call", "posted
/// event", "sent message", "log line", "console line". Throws BadStatement.
std::vector<std::string> recordLines(World& world, const std::string& name);
/// Everything recorded so far is behind us; ticks are counted from now.
void forgetRecords(World& world);

}  // namespace quorvane::scenario
