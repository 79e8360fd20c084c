#pragma once
// The input methods that run on this desktop.

#include <string>
#include <vector>

#include "hosts/desktop/ProcessRegistry.h"
#include "platform/MessagePorts.h"
#include "tools/checker/InputMethodPort.h"

namespace quorvane::checker {

/// Process ids, in the registry's order.
std::vector<std::int32_t> runningInputMethods(const desktop::ProcessRegistry& registry);

/// The base name with both words of the serial number behind it, in decimal.
std::string inputMethodPortName(const ProcessSerialNumber& serialNumber);

/// With several input methods running, the one that asks is the one that last attached or detached
/// the interactive text record: it does so for each key that it publishes.
class DesktopInputMethodPort final : public InputMethodPort {
 public:
  /// `textSegment`: the id of that record's segment.
  DesktopInputMethodPort(desktop::ProcessRegistry& registry, MessagePorts& ports, int textSegment)
      : registry_(registry), ports_(ports), textSegment_(textSegment) {}

  [[nodiscard]] std::int32_t asker() const override;
  bool find() override;
  bool send(std::int32_t messageId, std::span<const std::uint8_t> payload) override;
  [[nodiscard]] std::int32_t processOf(std::uint32_t signature) const override;
  [[nodiscard]] const std::string& name() const override { return name_; }

 private:
  desktop::ProcessRegistry& registry_;
  MessagePorts& ports_;
  int textSegment_;
  std::string name_;
  std::shared_ptr<CFMessagePort> remote_;
};

}  // namespace quorvane::checker
