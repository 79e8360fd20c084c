#pragma once
// A served message port: its socket, and the clients that have connected. Nothing that a client
// does or leaves undone can block it.

#include <list>
#include <string>
#include <vector>

#include "hosts/desktop/MessageFraming.h"
#include "hosts/desktop/RunLoop.h"
#include "hosts/desktop/RuntimeFolder.h"

namespace quorvane::desktop {

class LocalPort final : public CFMessagePort, public std::enable_shared_from_this<LocalPort> {
 public:
  /// Null where another process serves the name or it can't be served. The socket file of a process
  /// that died is taken over.
  static std::shared_ptr<LocalPort> serve(const RuntimeFolder& folder, std::string_view name,
                                          CFMessagePortCallBack callback, RunLoop& runLoop,
                                          quorvane::LogSink& log);
  LocalPort(std::filesystem::path path, Descriptor listener, CFMessagePortCallBack callback,
            RunLoop& runLoop, quorvane::LogSink& log);
  ~LocalPort() override;
  LocalPort(const LocalPort&) = delete;
  LocalPort& operator=(const LocalPort&) = delete;

  /// From here on messages are handled as the run loop turns.
  void startReceiving();
  /// Closes every socket and removes the file.
  void close();

 private:
  struct Client {
    std::uint64_t number = 0;
    Descriptor socket;
    std::unique_ptr<Registration> watch;
  };
  using ClientPointer = std::shared_ptr<Client>;

  void acceptClient();
  void welcome(Descriptor socket);
  void readFrom(std::uint64_t number);
  void handle(const ClientPointer& client, const Request& request);
  void answer(const ClientPointer& client, std::span<const std::uint8_t> reply);
  ClientPointer findAndRefresh(std::uint64_t number);
  void drop(std::uint64_t number);
  void drop(std::uint64_t number, std::string_view reason);
  void tell(const std::string& what);

  std::filesystem::path path_;
  Descriptor listener_;
  std::uint64_t fileNumber_ = 0;  ///< inode of our socket file
  CFMessagePortCallBack callback_;
  RunLoop& runLoop_;
  quorvane::LogSink& log_;
  std::unique_ptr<Registration> acceptWatch_;
  std::list<ClientPointer> clients_;  ///< the one that was silent longest comes first
  std::uint64_t nextNumber_ = 0;
  std::vector<std::uint8_t> packet_;
};

}  // namespace quorvane::desktop
