#pragma once
// Message ports over SOCK_SEQPACKET sockets in the runtime folder; the socket has the port's name.

#include <functional>
#include <map>
#include <string>

#include "hosts/desktop/RemotePort.h"
#include "hosts/desktop/RuntimeFolder.h"
#include "hosts/desktop/WithinKey.h"
#include "platform/MessagePorts.h"

namespace quorvane::desktop {

class LocalPort;

class MessagePorts final : public quorvane::MessagePorts {
 public:
  MessagePorts(const RuntimeFolder& folder, RunLoop& runLoop, quorvane::LogSink& log);
  ~MessagePorts() override;

  std::shared_ptr<CFMessagePort> CFMessagePortCreateLocal(std::string_view name,
                                                          CFMessagePortCallBack callback) override;
  std::shared_ptr<CFMessagePort> CFMessagePortCreateRemote(std::string_view name) override;
  std::shared_ptr<CFRunLoopSource> CFMessagePortCreateRunLoopSource(
      const std::shared_ptr<CFMessagePort>& port) override;
  std::int32_t CFMessagePortSendRequest(CFMessagePort& remote, std::int32_t messageId,
                                        std::span<const std::uint8_t> data, Seconds sendTimeout,
                                        Seconds receiveTimeout, CFData* reply) override;

  /// Stops serving: sockets are closed and their files removed, whoever still keeps the ports.
  void closeLocalPorts();

  /// No wait then lasts longer than two seconds, however long the caller would have patience.
  WithinKey withinKey;

 private:
  [[nodiscard]] RemotePort::Patience patience(Seconds sendTimeout, Seconds receiveTimeout) const;

  const RuntimeFolder& folder_;
  RunLoop& runLoop_;
  quorvane::LogSink& log_;
  std::map<std::string, std::weak_ptr<LocalPort>, std::less<>> served_;
  std::map<std::string, std::shared_ptr<RemotePort>, std::less<>> remotes_;
};

}  // namespace quorvane::desktop
