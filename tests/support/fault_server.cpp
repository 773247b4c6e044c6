#include "tests/support/fault_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace {

bool sendAll(int client, const std::string& bytes) {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t got = ::send(client, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (got <= 0) return false;
    sent += static_cast<std::size_t>(got);
  }
  return true;
}

int boundSocket(int& port) {
  const int number = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (number < 0 || ::bind(number, generic, size) != 0 ||
      ::getsockname(number, generic, &size) != 0) {
    throw std::runtime_error("no loopback socket");
  }
  port = ntohs(address.sin_port);
  return number;
}

std::string requestOf(int client) {
  std::string request;
  char buffer[4096];
  while (request.size() < 65536 && request.find("\r\n\r\n") == std::string::npos) {
    const ssize_t got = ::recv(client, buffer, sizeof buffer, 0);
    if (got <= 0) break;
    request.append(buffer, static_cast<std::size_t>(got));
  }
  return request;
}

/// The last component: a proxy is asked for the whole address.
std::string pathOf(const std::string& request) {
  const std::string target = request.substr(0, request.find(" HTTP/"));
  return target.substr(target.rfind('/') + 1);
}

}  // namespace

std::string httpHead(const std::string& status, const std::string& headers) {
  return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n";
}

std::string httpWhole(const std::string& status, const std::string& body) {
  return httpHead(status, "Content-Length: " + std::to_string(body.size()) + "\r\n") + body;
}

FaultServer::FaultServer(std::map<std::string, Answer> answers) : answers_(std::move(answers)) {
  listener_ = boundSocket(port_);
  silent_ = boundSocket(silentPort_);
  if (::listen(listener_, 16) != 0) throw std::runtime_error("cannot listen");
  thread_ = std::thread(&FaultServer::serve, this);
}

FaultServer::~FaultServer() {
  stop_ = true;
  thread_.join();
  ::close(listener_);
  ::close(silent_);
}

std::string FaultServer::url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + "/" + path;
}

std::string FaultServer::refusingUrl() const {
  return "http://127.0.0.1:" + std::to_string(silentPort_) + "/ok";
}

void FaultServer::serve() {
  while (!stop_) {
    pollfd waiting{listener_, POLLIN, 0};
    if (::poll(&waiting, 1, 20) <= 0) continue;
    const int client = ::accept(listener_, nullptr, nullptr);
    if (client < 0) continue;
    const timeval limit{20, 0};
    ::setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    ::setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    ++connections_;
    answer(client);
    ::close(client);
  }
}

void FaultServer::answer(int client) const {
  const auto found = answers_.find(pathOf(requestOf(client)));
  if (found == answers_.end()) return;
  const Answer& told = found->second;
  bool alive = sendAll(client, told.first);
  for (int i = 0; alive && !stop_ && i < told.times; ++i) {
    std::this_thread::sleep_for(told.pause);
    alive = sendAll(client, told.again);
  }
  const linger hard{told.reset, 0};
  ::setsockopt(client, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
}
