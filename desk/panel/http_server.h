// The HTTP library's server with bounds on what one connection may cost.
#pragma once

#include <httplib.h>

namespace desk {

/// Serves one request per connection. A request, headers and body together, may take 16 KiB and
/// five seconds; then the connection ends. Answers may take longer, each write five seconds.
class HttpServer : public httplib::Server {
 public:
  HttpServer();

  /// Ends connections that wait for a request. Call it before `stop`.
  void refuseRequests() { refusing_ = true; }

 private:
  bool process_and_close_socket(socket_t socket) override;

  std::atomic<bool> refusing_{false};
};

}  // namespace desk
