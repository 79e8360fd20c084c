#include "hosts/journal/Journal.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <utility>

namespace quorvane {
namespace {

template <class... Numbers>
void appendFormatted(std::string& line, const char* format, Numbers... numbers) {
  std::array<char, 64> text;
  std::snprintf(text.data(), text.size(), format, numbers...);
  line += text.data();
}

}  // namespace

void Journal::append(std::string& line, Hex number) {
  appendFormatted(line, "0x%llx", static_cast<unsigned long long>(number.value));
}

void Journal::append(std::string& line, Octal number) {
  appendFormatted(line, "%#o", static_cast<unsigned>(number.value));
}

void Journal::append(std::string& line, Code code) {
  std::string characters;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto byte = static_cast<unsigned char>(code.value >> shift);
    if (byte < 0x20 || byte > 0x7E) return append(line, code.value);
    characters += static_cast<char>(byte);
  }
  line += characters;
}

void Journal::append(std::string& line, double number) { appendFormatted(line, "%g", number); }

void Journal::append(std::string& line, const ProcessSerialNumber& psn) {
  append(line, psn.highLongOfPSN);
  line += ' ';
  append(line, psn.lowLongOfPSN);
}

void Journal::count() {
  ++calls_;
  if (!planned_ || calls_ != plannedAt_) return;
  const std::function<void()> function = std::exchange(planned_, nullptr);
  function();
}

void Journal::repeated(std::string_view name) {
  count();
  if (!recording_) return;
  if (run_ != name || lines_.empty()) {
    add(std::string(name));
    run_ = name;
    runLength_ = 1;
    return;
  }
  lines_.back() = run_ + " x" + std::to_string(++runLength_);
}

void Journal::beforeCall(std::uint64_t n, std::function<void()> function) {
  plannedAt_ = calls_ + n;
  planned_ = n == 0 ? nullptr : std::move(function);
}

std::vector<std::string> Journal::take() {
  std::vector<std::string> taken(std::make_move_iterator(lines_.begin()),
                                 std::make_move_iterator(lines_.end()));
  clear();
  return taken;
}

void Journal::clear() {
  dropped_ += lines_.size();
  lines_.clear();
  run_.clear();
}

void Journal::setLimit(std::size_t limit) {
  limit_ = std::max<std::size_t>(limit, 1);
  while (lines_.size() > limit_) {
    lines_.pop_front();
    ++dropped_;
  }
}

std::size_t Journal::add(std::string line) {
  run_.clear();
  if (lines_.size() == limit_) {
    lines_.pop_front();
    ++dropped_;
  }
  lines_.push_back(std::move(line));
  return dropped_ + lines_.size() - 1;
}

std::string* Journal::find(std::size_t line) {
  if (line == kNoLine || line < dropped_ || line - dropped_ >= lines_.size()) return nullptr;
  return &lines_[line - dropped_];
}

}  // namespace quorvane
