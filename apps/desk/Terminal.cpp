#include "apps/desk/Terminal.h"

#define NCURSES_NOMACROS
#include <curses.h>
#include <fcntl.h>
#include <langinfo.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <clocale>
#include <stdexcept>
#include <string_view>

#include "apps/desk/CrashGuard.h"
#include "apps/desk/TerminalType.h"

namespace quorvane::desk {
namespace {

constexpr int kEscapeMilliseconds = 25;  // until a lone Escape is taken for the key

/// The terminal's characters are taken for UTF-8 whatever the locale says of others.
void chooseCharacters() {
  std::setlocale(LC_CTYPE, "");
  if (std::string_view(::nl_langinfo(CODESET)) != "UTF-8") std::setlocale(LC_CTYPE, "C.UTF-8");
}

attr_t attributesOf(const Look& look) {
  attr_t attributes = A_NORMAL;
  if (look.reversed) attributes |= A_REVERSE;
  if (look.underlined) attributes |= A_UNDERLINE;
  if (look.bold) attributes |= A_BOLD;
  if (look.faint) attributes |= A_DIM;
  return attributes;
}

void drawCell(int row, int column, const Cell& cell) {
  const std::wstring text(cell.text.begin(), cell.text.end());
  cchar_t character;
  ::setcchar(&character, text.c_str(), attributesOf(cell.look), 0, nullptr);
  ::mvadd_wch(row, column, &character);
}

termios currentModes() {
  termios modes{};
  ::tcgetattr(STDIN_FILENO, &modes);
  return modes;
}

SCREEN* openScreen() {
  SCREEN* const screen = ::newterm(nullptr, stdout, stdin);
  if (screen == nullptr) throw std::runtime_error("the terminal can't be drawn on");
  return screen;
}

}  // namespace

struct Terminal::Screen {
  termios before = currentModes();
  SCREEN* screen = openScreen();
  CrashGuard guard{before, terminalFarewell()};

  Screen() = default;
  ~Screen() {
    ::endwin();
    ::delscreen(screen);
  }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
};

Terminal::Terminal(int errorDescriptor) : errors_(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)) {
  chooseCharacters();
  screen_ = std::make_unique<Screen>();
  ::dup2(errorDescriptor, STDERR_FILENO);
  ::raw();
  ::noecho();
  ::nonl();
  ::keypad(stdscr, TRUE);
  ::nodelay(stdscr, TRUE);
  ::set_escdelay(kEscapeMilliseconds);
}

Terminal::~Terminal() {
  screen_.reset();
  if (errors_.valid()) ::dup2(errors_.get(), STDERR_FILENO);
}

int Terminal::rows() const { return ::getmaxy(stdscr); }
int Terminal::columns() const { return ::getmaxx(stdscr); }

void Terminal::resize() {
  winsize size{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0) return;
  ::resizeterm(size.ws_row, size.ws_col);
  ::clearok(curscr, TRUE);
}

void Terminal::show(const Canvas& canvas) {
  for (int row = 0; row < canvas.rows(); ++row) {
    for (int column = 0; column < canvas.columns(); ++column) {
      const Cell& cell = canvas.at(row, column);
      if (!cell.text.empty()) drawCell(row, column, cell);
    }
  }
  ::curs_set(canvas.cursorShown ? 1 : 0);
  ::move(canvas.cursorRow, canvas.cursorColumn);
  ::refresh();
}

/// A failure may mean a broken character, with a key behind it in curses' own queue; only a second
/// one means that there is none.
bool Terminal::read(std::optional<DeskKey>& key) {
  wint_t code = 0;
  int kind = ::get_wch(&code);
  if (kind == ERR) kind = ::get_wch(&code);
  if (kind == ERR) return false;
  key = kind == KEY_CODE_YES ? keyOfCode(static_cast<int>(code))
                             : keyOfCharacter(static_cast<char32_t>(code));
  return true;
}

}  // namespace quorvane::desk
