#pragma once
// SOCK_SEQPACKET sockets of the message ports: made, checked and spoken to. Nothing here waits.

#include <cstdint>
#include <filesystem>
#include <span>

#include "hosts/desktop/Descriptor.h"

namespace quorvane::desktop {

enum class Transfer {
  Done,
  NotReady,  ///< no packet there, or no room for one
  Gone,      ///< the other end has closed or died
  Failed     ///< anything else; a packet larger than the buffer, too
};

/// Invalid where nobody serves `path` or, with errno EPERM, somebody who isn't this user.
Descriptor connectTo(const std::filesystem::path& path);
/// True where a file lies at `path` that no process serves any more.
bool isLeftOver(const std::filesystem::path& path);
/// Invalid, with errno set, where the path can't be bound.
Descriptor listenAt(const std::filesystem::path& path);
/// Invalid, with errno set, where there is nobody; a client that isn't this user is turned away.
Descriptor acceptFrom(int listener);

/// One packet of two pieces.
Transfer sendPacket(int socket, std::span<const std::uint8_t> head,
                    std::span<const std::uint8_t> rest);
/// One packet into `buffer`; `size` is its length, never 0: no packet of a client is empty, and one
/// that is reads as Gone.
Transfer receiveRequest(int socket, std::span<std::uint8_t> buffer, std::size_t& size);
/// The same for an answer, which may be empty, on a socket that `connectTo` made.
Transfer receiveReply(int socket, std::span<std::uint8_t> buffer, std::size_t& size);

}  // namespace quorvane::desktop
