#pragma once
// The sending end of a message port: one connection, kept for as long as the peer lives. The run
// loop reads it all the time: it notices there that the peer has gone, and drops what nobody asked
// for.

#include <optional>
#include <vector>

#include "hosts/desktop/MessageFraming.h"
#include "hosts/desktop/PacketSocket.h"
#include "hosts/desktop/RunLoop.h"

namespace quorvane::desktop {

class RemotePort final : public CFMessagePort, public std::enable_shared_from_this<RemotePort> {
 public:
  /// Null where nobody serves `path`.
  static std::shared_ptr<RemotePort> connect(const std::filesystem::path& path, RunLoop& runLoop);
  RemotePort(std::filesystem::path path, Descriptor socket, RunLoop& runLoop);

  /// False once the peer was seen to be gone; the port is then of no further use.
  [[nodiscard]] bool isValid() const { return valid_; }

  /// How long is waited.
  struct Patience {
    RunLoop::Deadline room;            ///< for room in the socket
    std::chrono::microseconds answer;  ///< from the moment of sending on
    RunLoop::Deadline end;             ///< of it all
  };

  /// Both give one of the kCFMessagePort codes. Waiting for room, `send` doesn't run the loop.
  std::int32_t send(std::int32_t messageId, std::span<const std::uint8_t> data,
                    RunLoop::Deadline room);
  /// Runs the loop until the answer is there. What is asked while another answer is awaited goes
  /// over a connection of its own.
  std::int32_t ask(std::int32_t messageId, std::span<const std::uint8_t> data,
                   const Patience& patience, CFData& reply);

 private:
  /// A request whose answer is awaited. Only one at a time: answers carry no id.
  struct Question {
    CFData& reply;
    std::optional<std::int32_t> status;
  };

  template <class WaitForRoom>
  std::int32_t sendRequest(std::int32_t messageId, bool replyWanted,
                           std::span<const std::uint8_t> data, WaitForRoom waitForRoom);
  bool runUntilRoom(RunLoop::Deadline deadline);
  std::int32_t await(Question& question, RunLoop::Deadline deadline);
  void readAnswer();
  void settle(std::int32_t status);
  void watchPeer();
  void reconnect();
  void invalidate();

  std::filesystem::path path_;
  Descriptor socket_;
  RunLoop& runLoop_;
  std::unique_ptr<Registration> watch_;
  std::vector<std::uint8_t> packet_;
  Question* question_ = nullptr;
  bool valid_ = true;
};

}  // namespace quorvane::desktop
