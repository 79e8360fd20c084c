#include "hosts/memory/MemoryMainApplication.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/base/Instance.h"

namespace quorvane::memory {
namespace {

constexpr std::size_t kTextCapacity = 384;
constexpr std::size_t kTextAt = 8;
constexpr std::size_t kKeyByteAt = 392;
constexpr std::size_t kClientNameAt = 4;
constexpr unsigned kScanField = 54;
constexpr unsigned kWritingStylesBit = 28;
constexpr std::int32_t kMessageInput = 202;

std::string toString(const std::vector<std::uint8_t>& bytes) {
  return {bytes.begin(), bytes.end()};
}

std::span<const std::uint8_t> bytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

MemoryMainApplication::MemoryMainApplication(MemoryClock& clock, MemorySharedMemory& memory,
                                             MemoryProcesses& processes, MemoryMessagePorts& ports)
    : clock_(clock), memory_(memory), processes_(processes), ports_(ports) {
  clock_.onMove([this] { poll(); });
  answer(kWritingStylesBit, {});
}

void MemoryMainApplication::launch(Notice notice) {
  if (running_) return;
  for (const auto& [key, usualSize] : kSegments) {
    const auto size = segmentSizes.find(key);
    const auto options = segmentOptions.find(key);
    segments_[key] =
        memory_.create(key, size == segmentSizes.end() ? usualSize : size->second,
                       options == segmentOptions.end() ? SegmentOptions{} : options->second);
  }
  running_ = true;
  setField(6, 1);
  setField(42, 1);
  setField(49, appFlagStatus);
  ports_.serve(kServerPort, server);
  psn_ = processes_.add(
      {{}, 0, "Quorvane", kSignature, "APPL"_4cc, 0, "com.tallowmere.quorvane", false}, notice);
}

void MemoryMainApplication::vanish(Notice notice, SegmentFate segments) {
  if (!running_) return;
  running_ = false;
  for (auto& [bit, request] : answers_) request.dueAt.reset();
  processes_.remove(psn_, notice);
  ports_.stopServing(kServerPort);
  if (segments == SegmentFate::Kept) return;
  for (const auto& [key, id] : segments_) memory_.remove(id);
}

std::string MemoryMainApplication::clientName() const {
  const auto length = memory_.read(segment(880), kClientNameAt, 1);
  return length.empty() ? "" : toString(memory_.read(segment(880), kClientNameAt + 1, length[0]));
}

PublishedText MemoryMainApplication::published() const {
  const int id = segment(893);
  PublishedText result;
  result.cursor = memory_.readWord(id, 0);
  result.length = memory_.readWord(id, 4);
  result.text =
      toString(memory_.read(id, kTextAt, std::min<std::size_t>(result.cursor, kTextCapacity)));
  const auto key = memory_.read(id, kKeyByteAt, 1);
  if (!key.empty()) result.keyByte = key[0];
  return result;
}

std::array<std::uint32_t, 6> MemoryMainApplication::command() const {
  std::array<std::uint32_t, 6> words{};
  const auto bytes = memory_.read(segment(896), 0, sizeof words);
  std::memcpy(words.data(), bytes.data(), bytes.size());
  return words;
}

void MemoryMainApplication::setMenuBuffer(const std::vector<std::string>& items,
                                          std::uint32_t checked) {
  const int id = segment(897);
  memory_.writeWord(id, 0, static_cast<std::uint32_t>(items.size()));
  memory_.writeWord(id, 4, checked);
  std::string pascal;
  for (const std::string& item : items) {
    pascal += static_cast<char>(std::min<std::size_t>(item.size(), 255));
    pascal += item.substr(0, 255);
  }
  memory_.write(id, 8, bytesOf(pascal));
}

int MemoryMainApplication::segment(std::uint32_t key) const {
  const auto found = segments_.find(key);
  return found == segments_.end() ? -1 : found->second;
}

void MemoryMainApplication::writeCorrectedText(std::string_view roman) {
  const int id = segment(893);
  const std::string_view text = roman.substr(0, kTextCapacity);
  memory_.writeWord(id, 0, static_cast<std::uint32_t>(text.size()));
  memory_.writeWord(id, 4, static_cast<std::uint32_t>(text.size()));
  memory_.write(id, kTextAt, bytesOf(text));
  setField(11, 1);
}

bool MemoryMainApplication::sendFix(std::uint32_t replaceCount, std::string_view utf8) {
  CFData data(4 + utf8.size());
  for (std::size_t i = 0; i < 4; ++i) {
    data[i] = static_cast<std::uint8_t>(replaceCount >> (24 - 8 * i));
  }
  std::copy(utf8.begin(), utf8.end(), data.begin() + 4);
  return sendMessage(kMessageInput, std::move(data));
}

bool MemoryMainApplication::sendMessage(std::int32_t id, std::optional<CFData> data) {
  const std::string port = ports_.servedName(kOwnPortPrefix);
  return !port.empty() && ports_.post(port, id, std::move(data));
}

std::uint32_t MemoryMainApplication::toolWord(std::size_t base, unsigned i) const {
  return memory_.readWord(segment(880), base + 4 * std::size_t{i});
}

void MemoryMainApplication::setToolWord(std::size_t base, unsigned i, std::uint32_t value) {
  memory_.writeWord(segment(880), base + 4 * std::size_t{i}, value);
}

bool MemoryMainApplication::asked(unsigned bit) const {
  return bit == kScanBit ? (field(kScanField) & kScanMask) != 0 : (field(1) >> bit & 1) != 0;
}

void MemoryMainApplication::clearRequest(unsigned bit) {
  if (bit != kScanBit) return setField(1, field(1) & ~(std::uint32_t{1} << bit));
  setField(1, field(1) & ~kScanMask);
  setField(kScanField, field(kScanField) & ~kScanMask);
}

void MemoryMainApplication::poll() {
  if (polling_) return;
  const FlagGuard polling(polling_);
  // An action may set, drop and answer other requests, or end this application.
  for (auto request = answers_.begin(); running_ && request != answers_.end();) {
    const unsigned bit = request->first;
    pollBit(bit, request->second);
    request = answers_.upper_bound(bit);
  }
}

void MemoryMainApplication::pollBit(unsigned bit, Pending& pending) {
  const bool isAsked = asked(bit);
  if (isAsked && !pending.dueAt && pending.answer.afterTicks) {
    pending.dueAt =
        clock_.now() + static_cast<std::uint64_t>(*pending.answer.afterTicks *
                                                  static_cast<double>(kNanosecondsPerTick));
  }
  if (!isAsked && !pending.answer.evenIfTakenBack) pending.dueAt.reset();
  if (!pending.dueAt || clock_.now() < *pending.dueAt) return;
  pending.dueAt.reset();
  ++answered_;
  const std::function<void()> action = pending.answer.action;
  if (action) action();
  if (running_) clearRequest(bit);
}

}  // namespace quorvane::memory
