#pragma once
// Log and console kept in memory.

#include <deque>
#include <string>

#include "hosts/journal/Journal.h"
#include "platform/Console.h"
#include "platform/LogSink.h"

namespace quorvane::memory {

/// Log lines aren't calls: they are neither counted nor in the journal.
class MemoryLogSink : public LogSink {
 public:
  void writeLine(std::string_view line) override;

  std::deque<std::string> lines;  ///< the latest `limit`
  std::size_t limit = 10000;
};

class MemoryConsole : public Console {
 public:
  explicit MemoryConsole(Journal& journal) : journal_(journal) {}

  void print(std::string_view line) override;

  std::deque<std::string> lines;  ///< the latest `limit`
  std::size_t limit = 10000;

 private:
  Journal& journal_;
};

}  // namespace quorvane::memory
