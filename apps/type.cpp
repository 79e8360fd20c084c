// `quorvane type`

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "apps/Command.h"
#include "apps/TypeOptions.h"
#include "apps/TypeSession.h"
#include "apps/Utf8Input.h"
#include "src/base/Text.h"

namespace quorvane {
namespace {

void printDocument(const std::string& document) {
  writeAll(STDOUT_FILENO, document);
  if (::close(STDOUT_FILENO) != 0) {
    throw std::system_error(errno, std::generic_category(), "can't write to standard output");
  }
}

void tellEarlyEnd(std::string_view why) {
  std::cerr << "quorvane type: " << why << "; the document is as it was typed so far\n";
}

/// In the middle of a message, where an exception would keep the process alive.
void endByMessage(const std::u16string& document) noexcept {
  tellEarlyEnd("a message has ended the input method");
  try {
    printDocument(toUtf8(document));
  } catch (const std::exception& error) {
    std::cerr << "quorvane type: " << error.what() << '\n';
  }
}

struct Typed {
  std::string document;
  int signal = 0;
};

Typed typeInto(const TypeOptions& options, std::u32string_view text) {
  TypeSession session(options);
  session.onQuit([&session] { endByMessage(session.document()); });
  session.run(text);
  if (options.times) std::cerr << "word ends: " << session.wordEnds().summary() << '\n';
  return {toUtf8(session.document()), session.signal()};
}

int runType(const TypeOptions& options) {
  std::u32string text;
  try {
    text = decodeUtf8(readAll(STDIN_FILENO));
  } catch (const BadInput& error) {
    std::cerr << "quorvane type: " << error.what() << '\n';
    return kExitBadUsage;
  }
  std::signal(SIGPIPE, SIG_IGN);
  const Typed typed = typeInto(options, text);
  if (typed.signal != 0) tellEarlyEnd(::strsignal(typed.signal));
  printDocument(typed.document);
  return typed.signal == 0 ? kExitDone : endBySignal(typed.signal);
}

/// What the stand-in says goes with what we say.
void chooseTalk(TypeOptions& options, bool log) {
  SystemOptions& system = options.system;
  if (log) system.logDescriptor = STDERR_FILENO;
  if (log) system.talk = StandInTalk::Log;
  if (options.trace || (log && system.showPrivate)) system.talk = StandInTalk::LogWithText;
}

}  // namespace

void addTypeCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "type", "Type standard input, key by key, into a document, and print the document.");
  const auto options = std::make_shared<TypeOptions>();
  const auto delay = std::make_shared<unsigned>(0);
  const auto log = std::make_shared<bool>(false);
  addSystemOptions(*command, options->system);
  command->add_option("--delay", *delay, "Milliseconds behind each key, spent in the run loop")
      ->check(CLI::Range(0U, 600'000U))
      ->option_text("MS (0 to 600000)");
  command->add_flag("--trace", options->trace,
                    "Tell each key's outcome, each client call and each packet, with their text");
  command->add_flag("--times", options->times, "Tell how long the keys took that end words");
  command->add_flag("--log", *log, "Show the log on standard error");
  command->add_flag("--show-private", options->system.showPrivate, "Show typed text in the log");
  command->callback([&run, options, delay, log] {
    options->delay = std::chrono::milliseconds(*delay);
    chooseTalk(*options, *log);
    run = [options] { return runType(*options); };
  });
}

}  // namespace quorvane
