#include "hosts/desktop/PacketSocket.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace quorvane::desktop {
namespace {

constexpr int kKind = SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC;
constexpr int kSendFlags = MSG_NOSIGNAL | MSG_DONTWAIT;

Descriptor newSocket() { return Descriptor(socket(AF_UNIX, kKind, 0)); }

bool fillAddress(const std::filesystem::path& path, sockaddr_un& address) {
  const std::string& name = path.native();
  if (name.size() >= sizeof(address.sun_path)) {
    errno = ENAMETOOLONG;
    return false;
  }
  address = {};
  address.sun_family = AF_UNIX;
  std::ranges::copy(name, address.sun_path);
  return true;
}

bool connectSocket(int socket, const std::filesystem::path& path) {
  sockaddr_un address;
  return fillAddress(path, address) &&
         connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

bool peerIsThisUser(int socket) {
  ucred peer{};
  socklen_t size = sizeof(peer);
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

/// With credentials on every packet, one of no bytes can be told from the end of the connection.
bool passCredentials(int socket) {
  const int on = 1;
  return setsockopt(socket, SOL_SOCKET, SO_PASSCRED, &on, sizeof(on)) == 0;
}

Transfer outcomeOf(ssize_t result) {
  if (result >= 0) return Transfer::Done;
  if (errno == EAGAIN) return Transfer::NotReady;
  if (errno == EPIPE || errno == ECONNRESET || errno == ENOTCONN) return Transfer::Gone;
  return Transfer::Failed;
}

template <class Call>
ssize_t uninterrupted(Call call) {
  ssize_t result = 0;
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

Transfer sendInPieces(int socket, std::span<const std::uint8_t> head,
                      std::span<const std::uint8_t> rest) {
  const auto piece = [](std::span<const std::uint8_t> bytes) {
    return iovec{const_cast<std::uint8_t*>(bytes.data()), bytes.size()};
  };
  std::array<iovec, 2> pieces{piece(head), piece(rest)};
  msghdr message{};
  message.msg_iov = pieces.data();
  message.msg_iovlen = pieces.size();
  return outcomeOf(uninterrupted([&] { return sendmsg(socket, &message, kSendFlags); }));
}

}  // namespace

bool isLeftOver(const std::filesystem::path& path) {
  const Descriptor socket = newSocket();
  return socket.valid() && !connectSocket(socket.get(), path) && errno == ECONNREFUSED;
}

Descriptor connectTo(const std::filesystem::path& path) {
  Descriptor socket = newSocket();
  if (!socket.valid() || !connectSocket(socket.get(), path)) return {};
  if (!peerIsThisUser(socket.get())) {
    socket.close();
    errno = EPERM;
  } else if (!passCredentials(socket.get())) {
    socket.close();
  }
  return socket;
}

Descriptor listenAt(const std::filesystem::path& path) {
  constexpr int kBacklog = 64;
  sockaddr_un address;
  Descriptor socket = newSocket();
  if (!socket.valid() || !fillAddress(path, address)) return {};
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  if (bind(socket.get(), generic, sizeof(address)) != 0) return {};
  if (listen(socket.get(), kBacklog) != 0) return {};
  return socket;
}

Descriptor acceptFrom(int listener) {
  Descriptor socket(accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (!socket.valid()) return {};
  if (!peerIsThisUser(socket.get())) {
    errno = EPERM;
    return {};
  }
  return socket;
}

Transfer sendPacket(int socket, std::span<const std::uint8_t> head,
                    std::span<const std::uint8_t> rest) {
  std::array<std::uint8_t, 512> whole;
  const std::size_t size = head.size() + rest.size();
  if (size > whole.size()) return sendInPieces(socket, head, rest);
  // For the usual small packet a copy costs less than a list of pieces.
  std::ranges::copy(rest, std::ranges::copy(head, whole.begin()).out);
  return outcomeOf(uninterrupted([&] { return send(socket, whole.data(), size, kSendFlags); }));
}

Transfer receiveRequest(int socket, std::span<std::uint8_t> buffer, std::size_t& size) {
  const ssize_t received = uninterrupted(
      [&] { return recv(socket, buffer.data(), buffer.size(), MSG_TRUNC | MSG_DONTWAIT); });
  if (received < 0) return outcomeOf(received);
  if (received == 0) return Transfer::Gone;
  size = static_cast<std::size_t>(received);
  return size > buffer.size() ? Transfer::Failed : Transfer::Done;
}

Transfer receiveReply(int socket, std::span<std::uint8_t> buffer, std::size_t& size) {
  // Room for the credentials alone: the kernel then drops whatever else comes along.
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control;
  iovec piece{buffer.data(), buffer.size()};
  msghdr message{};
  message.msg_iov = &piece;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  const ssize_t received = uninterrupted([&] { return recvmsg(socket, &message, MSG_DONTWAIT); });
  if (received < 0) return outcomeOf(received);
  if ((message.msg_flags & MSG_TRUNC) != 0) return Transfer::Failed;
  size = static_cast<std::size_t>(received);
  return size == 0 && message.msg_controllen == 0 ? Transfer::Gone : Transfer::Done;
}

}  // namespace quorvane::desktop
