#include "hosts/memory/MemoryConsole.h"

namespace quorvane::memory {
namespace {

void keep(std::deque<std::string>& lines, std::string_view line, std::size_t limit) {
  while (!lines.empty() && lines.size() >= limit) lines.pop_front();
  if (limit > 0) lines.emplace_back(line);
}

}  // namespace

void MemoryLogSink::writeLine(std::string_view line) { keep(lines, line, limit); }

void MemoryConsole::print(std::string_view line) {
  journal_.call("print ", line.substr(0, line.find('\n')));
  keep(lines, line, limit);
}

}  // namespace quorvane::memory
