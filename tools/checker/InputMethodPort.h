#pragma once
// The input method's own port, as the conversation needs it.

#include <cstdint>
#include <span>
#include <string>

namespace quorvane::checker {

class InputMethodPort {
 public:
  virtual ~InputMethodPort() = default;

  /// Process id of the input method that asks for the scan in progress; 0 where it can't be told.
  [[nodiscard]] virtual std::int32_t asker() const = 0;
  /// Looks for the port of that one. False where it can't be told or has no port.
  virtual bool find() = 0;
  /// To the one found last, without waiting for a reply. False where the message didn't go.
  virtual bool send(std::int32_t messageId, std::span<const std::uint8_t> payload) = 0;
  /// Of the application with this signature; 0 where it isn't known.
  [[nodiscard]] virtual std::int32_t processOf(std::uint32_t /*signature*/) const { return 0; }
  /// Of the one found last.
  [[nodiscard]] virtual const std::string& name() const = 0;
};

}  // namespace quorvane::checker
