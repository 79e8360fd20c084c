#include "tools/manual/ManPages.h"

#include <cctype>
#include <sstream>

#include "tools/manual/CommandTree.h"

namespace quorvane::manual {
namespace {

/// Nothing in it is a request, and each hyphen can be copied.
std::string escaped(const std::string& text) {
  std::string result;
  bool isLineStart = true;
  for (const char each : text) {
    if (isLineStart && (each == '.' || each == '\'')) result += "\\&";
    if (each == '\\' || each == '-') result += '\\';
    result += each == '\\' ? 'e' : each;
    isLineStart = each == '\n';
  }
  return result;
}

std::string bold(const std::string& text) { return "\\fB" + escaped(text) + "\\fR"; }

std::string upperCase(std::string text) {
  for (char& each : text) each = static_cast<char>(std::toupper(static_cast<unsigned char>(each)));
  return text;
}

/// "[OPTIONS] FILE..."
std::string usageOf(const CLI::App& command) {
  std::string usage = optionsOf(command).empty() ? "" : " [OPTIONS]";
  for (const CLI::Option* const each : optionsOf(command)) {
    if (!each->get_positional()) continue;
    const std::string name =
        each->get_name(true) + (each->get_items_expected_max() > 1 ? "..." : "");
    usage += each->get_required() ? " " + name : " [" + name + "]";
  }
  return commandsOf(command).empty() ? usage : usage + " COMMAND";
}

/// What its value may be; of a positional one only where that is a choice.
std::string valueOf(const CLI::Option& option) {
  std::string kind = CLI::Formatter().make_option_opts(&option);
  if (!option.get_positional()) return kind;
  const std::size_t choice = kind.find('{');
  return choice == std::string::npos ? "" : " " + kind.substr(choice, kind.find('}') + 1 - choice);
}

/// A line may be broken behind each comma.
std::string breakable(const std::string& text) {
  std::string result;
  for (const char each : text) result += each == ',' ? ",\\:" : std::string(1, each);
  return result;
}

void writeOption(std::ostream& page, const CLI::Option& option) {
  const bool isPositional = option.get_positional();
  page << ".TP\n"
       << bold(option.get_name(isPositional, !isPositional)) << breakable(escaped(valueOf(option)))
       << '\n'
       << escaped(option.get_description()) << '\n';
}

/// A command's command has but the usual help.
void writeOptions(std::ostream& page, const CLI::App& command, bool withHelp = true) {
  for (const CLI::Option* const each : optionsOf(command)) {
    if (withHelp || each != command.get_help_ptr()) writeOption(page, *each);
  }
}

void writeCommand(std::ostream& page, const std::string& name, const CLI::App& command) {
  page << ".SS " << escaped(name) << escaped(usageOf(command)) << '\n'
       << escaped(command.get_description()) << '\n';
  writeOptions(page, command, false);
}

void writeHead(std::ostream& page, const CLI::App& command, const std::string& name,
               const std::string& version) {
  std::string file = name;
  for (char& each : file) each = each == ' ' ? '-' : each;
  page << ".TH " << escaped(upperCase(file)) << " 1 \"\" \"quorvane " << version << "\"\n"
       << ".SH NAME\n"
       << escaped(file) << " \\- " << escaped(summaryOf(command.get_description()))
       << "\n.SH SYNOPSIS\n"
       << bold(name) << escaped(usageOf(command)) << "\n.SH DESCRIPTION\n"
       << escaped(command.get_description()) << '\n';
  if (!command.get_footer().empty()) page << ".PP\n" << escaped(command.get_footer()) << '\n';
  page << ".SH OPTIONS\n";
  writeOptions(page, command);
}

void writeExitStatus(std::ostream& page) {
  page << ".SH EXIT STATUS\n.TP\n0\nIt did what was asked.\n"
          ".TP\n1\nAn expectation failed, or the work could not be done.\n"
          ".TP\n2\nBad usage or bad input.\n";
}

std::string commandPage(const CLI::App& command, const std::string& program,
                        const std::string& version) {
  std::ostringstream page;
  writeHead(page, command, program + " " + command.get_name(), version);
  if (!commandsOf(command).empty()) page << ".SH COMMANDS\n";
  for (const CLI::App* const each : commandsOf(command)) {
    writeCommand(page, each->get_name(), *each);
  }
  writeExitStatus(page);
  page << ".SH SEE ALSO\n\\fB" << program << "\\fR(1)\n";
  return page.str();
}

std::string programPage(const CLI::App& program, const std::string& version) {
  std::ostringstream page;
  writeHead(page, program, program.get_name(), version);
  page << ".SH COMMANDS\n";
  std::string also;
  for (const CLI::App* const each : commandsOf(program)) {
    page << ".TP\n" << bold(each->get_name()) << '\n' << escaped(each->get_description()) << '\n';
    also += (also.empty() ? "" : ",\n") + bold(program.get_name() + "-" + each->get_name()) + "(1)";
  }
  writeExitStatus(page);
  page << ".SH SEE ALSO\n" << also << '\n';
  return page.str();
}

}  // namespace

std::map<std::string, std::string> manPages(const CLI::App& program, const std::string& version) {
  std::map<std::string, std::string> pages;
  pages[program.get_name() + ".1"] = programPage(program, version);
  for (const CLI::App* const each : commandsOf(program)) {
    pages[program.get_name() + "-" + each->get_name() + ".1"] =
        commandPage(*each, program.get_name(), version);
  }
  return pages;
}

}  // namespace quorvane::manual
