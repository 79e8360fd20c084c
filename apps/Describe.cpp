#include "apps/Describe.h"

#include "src/base/Text.h"

namespace quorvane {
namespace {

constexpr std::int32_t kBasicMessageInput = 202;

std::string_view kindOf(NSEventType type) {
  switch (type) {
    case NSEventType::KeyDown:
      return "key";
    case NSEventType::KeyUp:
      return "key up";
    case NSEventType::FlagsChanged:
      return "flags changed";
    default:
      return "mouse";
  }
}

/// One character: a control character by its code, every other as it is.
std::string readable(std::u16string_view characters) {
  if (characters.empty()) return {};
  const char16_t first = characters.front();
  if (first < 32 || first == 127) return "code " + std::to_string(static_cast<unsigned>(first));
  return '"' + toUtf8(characters) + '"';
}

/// Four printable characters, or decimal.
std::string messageName(std::int32_t id) {
  std::string letters;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto byte = static_cast<unsigned char>((static_cast<std::uint32_t>(id) >> shift) & 0xFF);
    if (byte < 32 || byte > 126) return std::to_string(id);
    letters += static_cast<char>(byte);
  }
  return "'" + letters + "'";
}

/// In quotes and on one line.
std::string inQuotes(std::string_view bytes) {
  std::string result = "\"";
  for (const char byte : bytes) result += byte == '\n' ? "\\n" : std::string(1, byte);
  return result + '"';
}

/// A replace count, 4 bytes big-endian, and the text.
std::string fixIn(const CFData& data) {
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < 4; ++i) count = (count << 8) | data[i];
  return ", replace " + std::to_string(count) + " by " +
         inQuotes(std::string(data.begin() + 4, data.end()));
}

}  // namespace

std::string describe(const field::EventReport& report) {
  return std::string(kindOf(report.event.type)) + ' ' + readable(report.event.characters) +
         (report.posted ? ", posted: " : ": ") + std::string(field::describe(report.outcome));
}

std::string describeReceived(std::int32_t messageId, const CFData* data) {
  const std::size_t size = data == nullptr ? 0 : data->size();
  std::string text = "packet " + messageName(messageId) + ", " + std::to_string(size) + " bytes";
  if (messageId == kBasicMessageInput && size >= 4) text += fixIn(*data);
  return text;
}

std::string describeSent(std::int32_t messageId, std::size_t size, std::int32_t result) {
  return "sent " + messageName(messageId) + ", " + std::to_string(size) + " bytes: " +
         (result == kCFMessagePortSuccess ? "taken" : "error " + std::to_string(result));
}

}  // namespace quorvane
