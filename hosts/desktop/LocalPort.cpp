#include "hosts/desktop/LocalPort.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "hosts/desktop/PacketSocket.h"

namespace quorvane::desktop {
namespace {

constexpr std::size_t kMostClients = 64;

bool isPortName(std::string_view name) {
  return !name.empty() && name.front() != '.' && name.find('/') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

std::uint64_t fileNumber(const std::filesystem::path& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// Under the folder's lock, so that two processes can't both find a leftover and take it over.
Descriptor listenOrTakeOver(const RuntimeFolder& folder, const std::filesystem::path& path) {
  const Descriptor lock = folder.lock();
  Descriptor listener = listenAt(path);
  if (listener.valid() || errno != EADDRINUSE || !isLeftOver(path)) return listener;
  unlink(path.c_str());
  return listenAt(path);
}

}  // namespace

std::shared_ptr<LocalPort> LocalPort::serve(const RuntimeFolder& folder, std::string_view name,
                                            CFMessagePortCallBack callback, RunLoop& runLoop,
                                            quorvane::LogSink& log) {
  if (!isPortName(name)) return nullptr;
  const std::filesystem::path path = folder / name;
  Descriptor listener = listenOrTakeOver(folder, path);
  if (!listener.valid()) return nullptr;
  return std::make_shared<LocalPort>(path, std::move(listener), std::move(callback), runLoop, log);
}

LocalPort::LocalPort(std::filesystem::path path, Descriptor listener,
                     CFMessagePortCallBack callback, RunLoop& runLoop, quorvane::LogSink& log)
    : path_(std::move(path)),
      listener_(std::move(listener)),
      fileNumber_(fileNumber(path_)),
      callback_(std::move(callback)),
      runLoop_(runLoop),
      log_(log),
      packet_(kRequestSizeLimit) {}

LocalPort::~LocalPort() { close(); }

void LocalPort::startReceiving() {
  if (acceptWatch_ != nullptr || !listener_.valid()) return;
  acceptWatch_ = runLoop_.watch(listener_.get(), G_IO_IN, [weak = weak_from_this()](GIOCondition) {
    if (const auto self = weak.lock()) self->acceptClient();
  });
}

void LocalPort::close() {
  if (!listener_.valid()) return;
  clients_.clear();
  acceptWatch_.reset();
  if (fileNumber(path_) == fileNumber_) unlink(path_.c_str());
  listener_.close();
}

void LocalPort::acceptClient() {
  Descriptor socket = acceptFrom(listener_.get());
  if (!socket.valid() && errno == EPERM) return tell("turned away a client of another user");
  const bool outOfDescriptors = !socket.valid() && (errno == EMFILE || errno == ENFILE);
  if ((outOfDescriptors || clients_.size() >= kMostClients) && !clients_.empty()) {
    drop(clients_.front()->number);
  }
  if (socket.valid()) welcome(std::move(socket));
}

void LocalPort::welcome(Descriptor socket) {
  auto client = std::make_shared<Client>();
  client->number = nextNumber_++;
  client->socket = std::move(socket);
  client->watch = runLoop_.watch(client->socket.get(), G_IO_IN,
                                 [weak = weak_from_this(), number = client->number](GIOCondition) {
                                   if (const auto self = weak.lock()) self->readFrom(number);
                                 });
  clients_.push_back(std::move(client));
}

void LocalPort::readFrom(std::uint64_t number) {
  const ClientPointer client = findAndRefresh(number);
  if (client == nullptr) return;
  std::size_t size = 0;
  const Transfer transfer = receiveRequest(client->socket.get(), packet_, size);
  if (transfer == Transfer::NotReady) return;
  if (transfer == Transfer::Gone) return drop(number);
  const auto request =
      transfer == Transfer::Done ? decodeRequest(std::span(packet_).first(size)) : std::nullopt;
  if (!request) return drop(number, "sent what is no message");
  handle(client, *request);
}

void LocalPort::handle(const ClientPointer& client, const Request& request) {
  // The packet buffer serves the next message too, which may come while this one is handled.
  const CFData payload(request.payload.begin(), request.payload.end());
  const bool replyWanted = request.replyWanted;
  std::optional<CFData> reply;
  try {
    reply = callback_(request.messageId, payload.empty() ? nullptr : &payload);
  } catch (...) {
    if (replyWanted) answer(client, {});
    throw;
  }
  if (replyWanted) answer(client, reply.value_or(CFData()));
}

void LocalPort::answer(const ClientPointer& client, std::span<const std::uint8_t> reply) {
  if (reply.size() > kMessagePayloadLimit) return drop(client->number, "can't get so long a reply");
  switch (sendPacket(client->socket.get(), reply, {})) {
    case Transfer::Done:
      return;
    case Transfer::Gone:
      return drop(client->number);
    case Transfer::NotReady:
    case Transfer::Failed:
      return drop(client->number, "doesn't read its replies");
  }
}

LocalPort::ClientPointer LocalPort::findAndRefresh(std::uint64_t number) {
  const auto found = std::ranges::find(clients_, number,
                                       [](const ClientPointer& client) { return client->number; });
  if (found == clients_.end()) return nullptr;
  clients_.splice(clients_.end(), clients_, found);
  return clients_.back();
}

void LocalPort::drop(std::uint64_t number) {
  std::erase_if(clients_, [&](const ClientPointer& client) {
    if (client->number != number) return false;
    client->watch.reset();
    return true;
  });
}

void LocalPort::drop(std::uint64_t number, std::string_view reason) {
  drop(number);
  tell("dropped a client that " + std::string(reason));
}

void LocalPort::tell(const std::string& what) {
  if (log_.enabled) log_.writeLine("message port " + path_.filename().string() + ": " + what);
}

}  // namespace quorvane::desktop
