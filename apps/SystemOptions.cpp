#include "apps/SystemOptions.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <string>
#include <string_view>

#include "apps/Hexadecimal.h"
#include "src/session/QBIM_IMK_SmartQuotes.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kAllSmartCharacters = kSmartQuotes | kSmartDashes | kSentenceCapitals;

std::optional<std::uint32_t> fromHexadecimal(std::string_view text) {
  std::uint32_t word = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, word, 16);
  return read.ec == std::errc() && read.ptr == end ? std::optional(word) : std::nullopt;
}

void addSwitches(CLI::App& command, SystemOptions& options) {
  command
      .add_option_function<std::string>(
          "--switches",
          [&options](const std::string& text) { options.switches = *fromHexadecimal(text); },
          "The switch word of this run instead of the user's settings")
      ->check([](const std::string& text) {
        return fromHexadecimal(text) ? std::string() : "not a hexadecimal word of 32 bits: " + text;
      })
      ->option_text("HEX [" + hexadecimal(options.application.usual) + "]");
}

}  // namespace

void addSystemOptions(CLI::App& command, SystemOptions& options) {
  addSwitches(command, options);
  command.add_flag("--with-space", options.completion.withSpace,
                   "A completed word brings a space along in this run");
  command.add_flag("--vertical", options.completion.vertical, "The candidates stand in a column");
  command.add_flag("--shift-toggle", options.completion.shiftToggle,
                   "A tap of Shift turns completion off and on");
  command.add_flag_callback(
      "--smart", [&options] { options.standIn.smartCharacters = kAllSmartCharacters; },
      "Quotes, dashes and the capitals of sentences are made as one types");
  command.add_flag_callback(
      "--no-checker", [&options] { options.checker = false; },
      "Leave the stand-in main application out");
}

}  // namespace quorvane
