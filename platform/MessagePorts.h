#pragma once
// CFMessagePort: named ports between processes. A CF object is a shared_ptr: releasing it is
// resetting the pointer.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/MacTypes.h"
#include "platform/RunLoop.h"

namespace quorvane {

using CFData = std::vector<std::uint8_t>;

/// Called on the run loop for each message. `data` is null where the message carried none. The
/// result is the reply; empty means none, and an asking sender then gets an empty one.
using CFMessagePortCallBack =
    std::function<std::optional<CFData>(std::int32_t messageId, const CFData* data)>;

class CFMessagePort {
 public:
  virtual ~CFMessagePort() = default;
};

inline constexpr std::int32_t kCFMessagePortSuccess = 0;
inline constexpr std::int32_t kCFMessagePortSendTimeout = -1;
inline constexpr std::int32_t kCFMessagePortReceiveTimeout = -2;
inline constexpr std::int32_t kCFMessagePortIsInvalid = -3;
inline constexpr std::int32_t kCFMessagePortTransportError = -4;

/// The largest payload of one message, in bytes.
inline constexpr std::size_t kMessagePayloadLimit = std::size_t{64} * 1024;

class MessagePorts {
 public:
  virtual ~MessagePorts() = default;

  /// Serves `name`. A second call for a name that this process serves gives the same port; null
  /// where another process serves it or the name can't be served.
  virtual std::shared_ptr<CFMessagePort> CFMessagePortCreateLocal(
      std::string_view name, CFMessagePortCallBack callback) = 0;
  /// Null where nobody serves the name. The same object for as long as its peer lives.
  virtual std::shared_ptr<CFMessagePort> CFMessagePortCreateRemote(std::string_view name) = 0;
  /// Null on failure.
  virtual std::shared_ptr<CFRunLoopSource> CFMessagePortCreateRunLoopSource(
      const std::shared_ptr<CFMessagePort>& port) = 0;
  /// One of the codes above. Without `reply` it returns as soon as the message is queued, waiting
  /// for room up to `sendTimeout`; with it, it runs the run loop until the answer came or
  /// `receiveTimeout` has passed.
  virtual std::int32_t CFMessagePortSendRequest(CFMessagePort& remote, std::int32_t messageId,
                                                std::span<const std::uint8_t> data,
                                                Seconds sendTimeout, Seconds receiveTimeout,
                                                CFData* reply) = 0;
};

}  // namespace quorvane
