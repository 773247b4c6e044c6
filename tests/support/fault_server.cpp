#include "tests/support/fault_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

/// One answer: `first`, then `again` as often as told with a pause before each, then the end.
struct Fault {
  std::string path, first, again{};
  int times = 0;
  std::chrono::milliseconds pause{0};
  bool reset = false;
};

std::string head(const std::string& status, const std::string& headers = {}) {
  return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n";
}

std::string length(std::uint64_t size) {
  return "Content-Length: " + std::to_string(size) + "\r\n";
}

std::string whole(const std::string& status, const std::string& body) {
  return head(status, length(body.size())) + body;
}

std::string redirect(const std::string& location) {
  return head("302 Found", "Location: " + location + "\r\n" + length(5)) + "moved";
}

/// The size of a chunk as its line tells it.
std::string size(const std::string& body) {
  char text[32];
  std::snprintf(text, sizeof text, "%zx", body.size());
  return text;
}

std::vector<Fault> makeFaults(const std::string& body) {
  const std::string block(16384, ' ');
  const std::string cutoff = head("200 OK", length(body.size() + 10)) + body;
  const std::string chunked = head("200 OK", "Transfer-Encoding: chunked\r\n");
  const std::chrono::milliseconds pause{20};
  return {
      {"ok", whole("200 OK", body)},
      {"page", whole("200 OK", "<!DOCTYPE html><html><p>Please log in<br></html>")},
      {"empty", whole("200 OK", "")},
      {"204", head("204 No Content")},
      {"206", whole("206 Partial Content", body)},
      {"304", head("304 Not Modified")},
      {"404", whole("404 Not Found", body)},
      {"500", whole("500 Server Error", body)},
      {"redirect", redirect("/ok")},
      {"loop", redirect("/loop")},
      {"to-file", redirect("file:///etc/hostname")},
      {"to-ftp", redirect("ftp://127.0.0.1/ok")},
      {"to-nowhere", head("302 Found", length(0))},
      {"cutoff", cutoff},
      {"short-length", head("200 OK", length(body.size() / 2)) + body},
      {"bad-length", head("200 OK", "Content-Length: -1\r\n") + body},
      {"two-lengths", head("200 OK", length(body.size()) + length(body.size() + 10)) + body},
      {"chunks", chunked + size(body) + "\r\n" + body + "\r\n0\r\n\r\n"},
      {"trailer", chunked + size(body) + "\r\n" + body + "\r\n0\r\nX-Sum: 1\r\n\r\n"},
      {"chunk-cutoff", chunked + "fff\r\n" + body},
      {"chunk-no-size", chunked + "zz\r\n" + body},
      {"chunk-huge-size", chunked + "ffffffffffffffffff\r\n" + body},
      {"chunk-no-end", chunked + size(body) + "\r\n" + body + "\r\n"},
      {"packed", head("200 OK", "Content-Encoding: gzip\r\n" + length(4)) + "\x1f\x8b\x08z"},
      {"reset", cutoff, "", 0, {}, true},
      {"hang-up", ""},
      {"half-a-head", "HTTP/1.1 200 OK\r\nContent-Le"},
      {"bad-status", "HTTP/1.1 9x9 What\r\n\r\n" + body},
      {"continues", "", "HTTP/1.1 100 Continue\r\n\r\n", 10'000},
      {"no-http", body},
      {"announced-huge", head("200 OK", length(std::uint64_t{1} << 40)) + body},
      {"endless", head("200 OK"), block, 4096},
      {"endless-headers", "HTTP/1.1 200 OK\r\n", "X-More: yes\r\n", 400'000},
      {"endless-header-line", "HTTP/1.1 200 OK\r\nX: ", block, 4096},
      {"silent", "", "", 150, pause},
      {"slow-head", "HTTP/1.1 200 OK\r\n", "X: y\r\n", 150, pause},
      {"slow", head("200 OK", length(100'000)), "  ", 250, pause},
  };
}

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

FaultServer::FaultServer(std::string body) : body_(std::move(body)) {
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

std::string FaultServer::url(const std::string& fault) const {
  return "http://127.0.0.1:" + std::to_string(port_) + "/" + fault;
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
  const std::string path = pathOf(requestOf(client));
  for (const Fault& fault : makeFaults(body_)) {
    if (path != fault.path) continue;
    bool alive = sendAll(client, fault.first);
    for (int i = 0; alive && !stop_ && i < fault.times; ++i) {
      std::this_thread::sleep_for(fault.pause);
      alive = sendAll(client, fault.again);
    }
    const linger hard{fault.reset, 0};
    ::setsockopt(client, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
  }
}
