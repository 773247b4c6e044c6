#include "desk/panel/http_server.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>

namespace desk {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr std::size_t kThreads = 16;
constexpr std::size_t kMostBytes = std::size_t{16} << 10;
constexpr std::size_t kMostBody = 1024;
constexpr milliseconds kRequestTime{5000};
constexpr milliseconds kWriteTime{5000};
constexpr milliseconds kLook{100};  ///< between two looks whether the server is to stop

/// A connection as the library's server reads and writes it.
class Connection : public httplib::Stream {
 public:
  Connection(socket_t socket, const std::atomic<bool>& refusing)
      : socket_(socket), refusing_(refusing), deadline_(Clock::now() + kRequestTime) {}

  bool is_readable() const override {
    while (!refusing_ && Clock::now() < deadline_) {
      if (poll(POLLIN, kLook)) return true;
    }
    return false;
  }

  /// Also false once the other side has gone.
  bool is_writable() const override {
    char byte = 0;
    const bool gone = ::recv(socket_, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
    return !gone && poll(POLLOUT, kWriteTime);
  }

  ssize_t read(char* bytes, size_t size) override {
    if (!is_readable()) return -1;
    const ssize_t got = ::recv(socket_, bytes, std::min(size, left_), 0);
    if (got > 0) left_ -= static_cast<std::size_t>(got);
    return got;
  }

  ssize_t write(const char* bytes, size_t size) override {
    if (!poll(POLLOUT, kWriteTime)) return -1;
    return ::send(socket_, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
  }

  void get_remote_ip_and_port(std::string&, int&) const override {}
  void get_local_ip_and_port(std::string&, int&) const override {}
  socket_t socket() const override { return socket_; }

 private:
  bool poll(short events, milliseconds time) const {
    pollfd ready{socket_, events, 0};
    return ::poll(&ready, 1, static_cast<int>(time.count())) > 0;
  }

  const socket_t socket_;
  const std::atomic<bool>& refusing_;
  const Clock::time_point deadline_;
  std::size_t left_ = kMostBytes;
};

/// Takes what the other side still sends: closing before that would also throw away the answer.
void drain(socket_t socket) {
  std::array<char, 4096> rest;
  std::size_t left = kMostBytes;
  pollfd ready{socket, POLLIN, 0};
  while (left > 0 && ::poll(&ready, 1, static_cast<int>(kLook.count())) > 0) {
    const ssize_t got = ::recv(socket, rest.data(), std::min(rest.size(), left), MSG_DONTWAIT);
    if (got <= 0) break;
    left -= static_cast<std::size_t>(got);
  }
}

}  // namespace

HttpServer::HttpServer() {
  new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  set_payload_max_length(kMostBody);
  // The library's own choice lets two servers share a port.
  set_socket_options([](socket_t socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
}

bool HttpServer::process_and_close_socket(socket_t socket) {
  Connection connection(socket, refusing_);
  bool closed = false;
  const bool served = process_request(connection, true, closed, nullptr);
  ::shutdown(socket, SHUT_WR);
  drain(socket);
  ::close(socket);
  return served;
}

}  // namespace desk
