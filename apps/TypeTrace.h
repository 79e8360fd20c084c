#pragma once
// What `type --trace` tells: a line for each key, each client call and each packet, in order.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/field/TextApplication.h"
#include "platform/MessagePorts.h"

namespace quorvane {

class TypeTrace {
 public:
  using Write = std::function<void(std::string_view)>;

  /// `write` gets one line at a time, without its line feed.
  explicit TypeTrace(Write write) : write_(std::move(write)) {}

  /// An event is over. A key up that changed nothing has no line.
  void event(const field::EventReport& report);
  void clientCall(const field::ClientCall& call);
  /// Segments attached since the line before are told with the next line.
  void attached(std::uint32_t key) { attached_.push_back(key); }
  /// The data may be null.
  void received(std::int32_t messageId, const CFData* data);
  void sent(std::int32_t messageId, std::size_t size, std::int32_t result);

 private:
  void line(std::string text);

  Write write_;
  std::vector<std::uint32_t> attached_;
};

}  // namespace quorvane
