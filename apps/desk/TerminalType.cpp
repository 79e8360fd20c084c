#include "apps/desk/TerminalType.h"

#define NCURSES_NOMACROS
#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <cstdlib>

namespace quorvane::desk {
namespace {

/// Null: the terminal hasn't got it.
const char* capability(const char* name) {
  const char* const text = ::tigetstr(name);
  return text == reinterpret_cast<const char*>(-1) ? nullptr : text;
}

std::string typeName() {
  const char* const type = std::getenv("TERM");
  return type == nullptr || *type == '\0' ? "(none)" : type;
}

}  // namespace

std::string terminalProblem() {
  if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDOUT_FILENO) == 0) {
    return "standard input and output must be a terminal";
  }
  int status = 0;
  if (::setupterm(nullptr, STDOUT_FILENO, &status) != OK) {
    return "the terminal's type isn't known: TERM=" + typeName();
  }
  const bool movesCursor = capability("cup") != nullptr;
  ::del_curterm(cur_term);
  return movesCursor ? "" : "the terminal can't place its cursor: TERM=" + typeName();
}

std::string terminalFarewell() {
  static std::string text;  // ncurses hands on bytes, and nothing with them
  text.clear();
  const auto keep = [](int byte) {
    text.push_back(static_cast<char>(byte));
    return byte;
  };
  for (const char* const name : {"rmkx", "sgr0", "cnorm", "rmcup"}) {
    if (const char* const sequence = capability(name)) ::tputs(sequence, 1, keep);
  }
  return text;
}

}  // namespace quorvane::desk
