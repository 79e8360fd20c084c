#pragma once
// Events and packets in readable lines, for whoever watches.

#include <cstdint>
#include <string>

#include "hosts/field/TextApplication.h"
#include "platform/MessagePorts.h"

namespace quorvane {

/// `key "a": consumed`.
std::string describe(const field::EventReport& report);
/// `packet 202, 8 bytes, replace 4 by "the "`. The data may be null.
std::string describeReceived(std::int32_t messageId, const CFData* data);
/// `sent 'QvQS', 0 bytes: taken`.
std::string describeSent(std::int32_t messageId, std::size_t size, std::int32_t result);

}  // namespace quorvane
