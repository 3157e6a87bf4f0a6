#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace pradelis::tests {

/// Stands on a free loopback port between clients and a server, counts how often a client has sent
/// something and waited for the answer, and can cut the line as a failing network does.
class Proxy {
 public:
  explicit Proxy(std::uint16_t server_port);
  ~Proxy();

  std::uint16_t port() const { return port_; }
  /// Requests of all clients so far, each counted when the server's answer to it begins.
  int round_trips() const { return round_trips_; }
  /// Closes all connections that are open.
  void cut();

 private:
  void accept_clients();
  void relay(int client, int server);
  void remember(int socket);

  std::uint16_t server_port_;
  std::uint16_t port_ = 0;
  int listener_ = -1;
  std::atomic<int> round_trips_ = 0;
  std::mutex mutex_;
  std::vector<int> sockets_;
  std::vector<std::thread> threads_;
  std::thread acceptor_;
};

/// Accepts connections on a free loopback port and never answers.
class SilentServer {
 public:
  SilentServer();
  ~SilentServer();
  std::uint16_t port() const { return port_; }

 private:
  int listener_ = -1;
  std::uint16_t port_ = 0;
};

/// Speaks as much of SQL Server's protocol as makes a client say who it is, and then hangs up.
class LoginRecorder {
 public:
  LoginRecorder();
  ~LoginRecorder();
  std::uint16_t port() const { return port_; }
  /// What the first client sent to log in; waits for it.
  std::string login();

 private:
  void answer();

  int listener_ = -1;
  std::uint16_t port_ = 0;
  std::string login_;
  std::thread thread_;
};

}  // namespace pradelis::tests
