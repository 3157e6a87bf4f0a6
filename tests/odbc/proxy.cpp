#include "tests/odbc/proxy.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace pradelis::tests {
namespace {

sockaddr_in loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int listen_on_free_port(std::uint16_t& port) {
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener, plain, size) != 0 || listen(listener, 16) != 0) throw std::runtime_error("no free port");
  getsockname(listener, plain, &size);
  port = ntohs(address.sin_port);
  return listener;
}

int connect_to(std::uint16_t port) {
  const int socket_to = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = loopback(port);
  if (connect(socket_to, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    close(socket_to);
    return -1;
  }
  const int at_once = 1;
  setsockopt(socket_to, IPPROTO_TCP, TCP_NODELAY, &at_once, sizeof at_once);
  return socket_to;
}

/// Hands on what there is to read; false at the end.
bool hand_on(int from, int to) {
  std::array<char, 65536> data;
  const ssize_t count = recv(from, data.data(), data.size(), 0);
  if (count <= 0) return false;
  ssize_t sent = 0;
  while (sent < count) {
    const ssize_t now = send(to, data.data() + sent, static_cast<std::size_t>(count - sent), MSG_NOSIGNAL);
    if (now <= 0) return false;
    sent += now;
  }
  return true;
}

}  // namespace

Proxy::Proxy(std::uint16_t server_port) : server_port_(server_port) {
  listener_ = listen_on_free_port(port_);
  acceptor_ = std::thread([this] { accept_clients(); });
}

Proxy::~Proxy() {
  shutdown(listener_, SHUT_RDWR);
  acceptor_.join();
  cut();
  for (std::thread& thread : threads_) thread.join();
  for (const int each : sockets_) close(each);
  close(listener_);
}

void Proxy::cut() {
  const std::lock_guard lock(mutex_);
  for (const int each : sockets_) shutdown(each, SHUT_RDWR);
}

void Proxy::remember(int socket) {
  const std::lock_guard lock(mutex_);
  sockets_.push_back(socket);
}

void Proxy::accept_clients() {
  for (;;) {
    const int client = accept(listener_, nullptr, nullptr);
    if (client < 0) return;
    const int server = connect_to(server_port_);
    remember(client);
    if (server < 0) {
      shutdown(client, SHUT_RDWR);
      continue;
    }
    remember(server);
    threads_.emplace_back([this, client, server] { relay(client, server); });
  }
}

void Proxy::relay(int client, int server) {
  std::array<pollfd, 2> both{{{client, POLLIN, 0}, {server, POLLIN, 0}}};
  bool asked = false;
  for (;;) {
    if (poll(both.data(), both.size(), -1) < 0) break;
    if (both[0].revents != 0) {
      if (!hand_on(client, server)) break;
      asked = true;
    }
    if (both[1].revents != 0) {
      if (asked) ++round_trips_;
      asked = false;
      if (!hand_on(server, client)) break;
    }
  }
  shutdown(client, SHUT_RDWR);
  shutdown(server, SHUT_RDWR);
}

SilentServer::SilentServer() { listener_ = listen_on_free_port(port_); }

SilentServer::~SilentServer() { close(listener_); }

LoginRecorder::LoginRecorder() {
  listener_ = listen_on_free_port(port_);
  thread_ = std::thread([this] { answer(); });
}

LoginRecorder::~LoginRecorder() {
  shutdown(listener_, SHUT_RDWR);
  if (thread_.joinable()) thread_.join();
  close(listener_);
}

void LoginRecorder::answer() {
  const int client = accept(listener_, nullptr, nullptr);
  if (client < 0) return;
  std::array<char, 4096> data;
  // The client asks what the server can do; the answer is its version, and that it does not encrypt.
  if (recv(client, data.data(), data.size(), 0) > 0) {
    constexpr std::array<unsigned char, 26> features{4, 1,   0,  26, 0, 0,   1, 0,  // header of a packet
                                                     0, 0,   11, 0,  6, 1,   0, 17, 0,
                                                     1, 255, 15, 0,  7, 208, 0, 0,  2};
    send(client, features.data(), features.size(), MSG_NOSIGNAL);
    const ssize_t count = recv(client, data.data(), data.size(), 0);
    if (count > 0) login_.assign(data.data(), static_cast<std::size_t>(count));
  }
  close(client);
}

std::string LoginRecorder::login() {
  thread_.join();
  return login_;
}

}  // namespace pradelis::tests
