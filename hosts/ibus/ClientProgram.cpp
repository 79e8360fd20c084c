#include "hosts/ibus/ClientProgram.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>

namespace quorvane::ibus {
namespace {

constexpr std::size_t kLongestName = 63;
constexpr std::size_t kLongestProcessName = 15;  // as the kernel keeps it

constexpr std::array<std::string_view, 12> kTerminals{
    "xterm",      "gnome-terminal-", "kgx",        "konsole", "xfce4-terminal", "mate-terminal",
    "lxterminal", "qterminal",       "terminator", "tilix",   "kitty",          "urxvt"};

std::int32_t numberIn(std::string_view text) {
  std::int32_t number = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  return end.ec == std::errc() && end.ptr == text.data() + text.size() ? number : 0;
}

std::string nameOfProcess(std::int32_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
  std::string name;
  std::getline(file, name);
  return name;
}

std::string printable(std::string_view name) {
  std::string made(name.substr(0, kLongestName));
  std::ranges::replace_if(
      made, [](char c) { return c < ' ' || c > '~'; }, '_');
  return made.empty() ? "unknown" : made;
}

}  // namespace

ClientProgram programOf(std::string_view client) {
  const std::size_t colon = client.find(':');
  const std::string_view own = colon == std::string_view::npos ? client : client.substr(colon + 1);
  const bool bracketed = own.size() > 2 && own.front() == '(' && own.back() == ')';
  const std::int32_t pid = bracketed ? numberIn(own.substr(1, own.size() - 2)) : 0;
  if (pid <= 0) return {printable(own), 0};
  const std::string name = nameOfProcess(pid);
  return name.empty() ? ClientProgram{printable(client), 0} : ClientProgram{printable(name), pid};
}

bool isTerminal(std::string_view program) {
  return std::ranges::any_of(kTerminals, [program](std::string_view terminal) {
    return terminal.ends_with('-') ? program.starts_with(terminal) : program == terminal;
  });
}

std::int32_t processNamed(std::string_view program) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
    const std::int32_t pid = numberIn(entry.path().filename().native());
    struct stat status {};
    if (pid == 0 || ::stat(entry.path().c_str(), &status) != 0) continue;
    const bool own = status.st_uid == ::geteuid();
    if (own && nameOfProcess(pid) == program.substr(0, kLongestProcessName)) return pid;
  }
  return 0;
}

}  // namespace quorvane::ibus
