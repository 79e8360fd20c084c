// `quorvane type`

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

#include "apps/Command.h"
#include "apps/EndSignals.h"
#include "apps/TypeOptions.h"
#include "apps/TypeSession.h"
#include "apps/Utf8Input.h"
#include "src/base/Text.h"

namespace quorvane {
namespace {

struct Typed {
  std::string document;
  int signal = 0;
};

Typed typeInto(const TypeOptions& options, std::u32string_view text) {
  auto held = std::make_optional<HeldEndSignals>();
  TypeSession session(options);
  held.reset();
  session.run(text);
  return {toUtf8(session.document()), session.signal()};
}

/// Ends as the signal would have ended us, now that everything is cleared away.
int endBySignal(int signal) {
  std::signal(signal, SIG_DFL);
  std::raise(signal);
  return kExitFailed;
}

void printDocument(const std::string& document) {
  writeAll(STDOUT_FILENO, document);
  if (::close(STDOUT_FILENO) != 0) {
    throw std::system_error(errno, std::generic_category(), "can't write to standard output");
  }
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
  if (typed.signal != 0) return endBySignal(typed.signal);
  printDocument(typed.document);
  return kExitDone;
}

}  // namespace

void addTypeCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "type", "Type standard input, key by key, into a document, and print the document.");
  const auto options = std::make_shared<TypeOptions>();
  const auto switches = std::make_shared<std::string>("11833");
  const auto delay = std::make_shared<unsigned>(0);
  command->add_option("--switches", *switches, "The application's switch word")
      ->check([](const std::string& text) {
        const bool good = !text.empty() && text.size() <= 8 &&
                          text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
        return good ? std::string() : "not a hexadecimal word of 32 bits: " + text;
      })
      ->option_text("HEX [11833]");
  command->add_option("--delay", *delay, "Milliseconds behind each key, spent in the run loop")
      ->check(CLI::Range(0U, 60'000U))
      ->option_text("MS");
  command->add_flag_callback(
      "--no-checker", [options] { options->checker = false; },
      "Leave the stand-in main application out");
  command->add_flag("--trace", options->trace,
                    "Tell each key's outcome, each client call and each packet, with their text");
  command->add_flag("--log", options->log, "Show the log on standard error");
  command->add_flag("--show-private", options->showPrivate, "Show typed text in the log");
  command->callback([&run, options, switches, delay] {
    options->switches = static_cast<std::uint32_t>(std::stoul(*switches, nullptr, 16));
    options->delay = std::chrono::milliseconds(*delay);
    run = [options] { return runType(*options); };
  });
}

}  // namespace quorvane
