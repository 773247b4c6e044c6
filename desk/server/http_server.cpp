#include "desk/server/http_server.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <thread>
#include <utility>

#include "desk/base/errors.h"
#include "desk/server/http_exchange.h"

namespace desk::server {

namespace {

using Clock = std::chrono::steady_clock;

constexpr unsigned kIdleSeconds = 5;  ///< without a byte in either direction
constexpr unsigned kMostConnections = 512;
constexpr std::chrono::seconds kStopTime{1};

/// A listening socket. Throws Error when the port is taken.
int listenOn(int port, int& taken) {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  const int yes = 1;  // so that a server can be started again at once
  setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const any = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener, any, size) != 0 || listen(listener, SOMAXCONN) != 0 ||
      getsockname(listener, any, &size) != 0) {
    close(listener);
    throw Error(kExitIoError, "port " + std::to_string(port) + " is taken");
  }
  taken = ntohs(address.sin_port);
  return listener;
}

/// Decodes in place. What would be cut short by a NUL stays as it is, and so is no path that
/// exists.
std::size_t decode(void*, MHD_Connection*, char* text) {
  const std::string whole = text;
  const std::size_t size = MHD_http_unescape(text);
  if (std::strlen(text) == size) return size;
  std::memcpy(text, whole.c_str(), whole.size() + 1);
  return whole.size();
}

}  // namespace

HttpServer::HttpServer(int port, Headers headers, HttpHandlers handlers)
    : headers_(std::move(headers)),
      handlers_(std::move(handlers)),
      listener_(listenOn(port, port_)) {}

HttpServer::~HttpServer() {
  if (daemon_ == nullptr) {
    close(listener_);
    return;
  }
  const auto end = Clock::now() + kStopTime;
  while (anyoneWaits() && Clock::now() < end) {
    poll();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  MHD_stop_daemon(daemon_);
}

void HttpServer::start() {
  daemon_ = MHD_start_daemon(
      MHD_USE_EPOLL_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_ITC |
          MHD_USE_SUPPRESS_DATE_NO_CLOCK,
      0, nullptr, nullptr, &Callbacks::request, this, MHD_OPTION_LISTEN_SOCKET, listener_,
      MHD_OPTION_CONNECTION_LIMIT, kMostConnections, MHD_OPTION_CONNECTION_TIMEOUT, kIdleSeconds,
      MHD_OPTION_CONNECTION_MEMORY_LIMIT, kMostBytes, MHD_OPTION_STRICT_FOR_CLIENT, 1,
      MHD_OPTION_UNESCAPE_CALLBACK, &decode, nullptr, MHD_OPTION_NOTIFY_CONNECTION,
      &Callbacks::connection, this, MHD_OPTION_NOTIFY_COMPLETED, &Callbacks::completed, nullptr,
      MHD_OPTION_END);
  if (daemon_ == nullptr) throw Error(kExitIoError, "cannot serve the page");
}

}  // namespace desk::server
