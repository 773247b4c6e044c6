// An HTTP server on the loopback that answers as it is told, however wrong that is.
#pragma once

#include <atomic>
#include <chrono>
#include <map>
#include <string>
#include <thread>

/// What is sent to one request: `first`, then `again` as often as told with a pause before each.
struct Answer {
  std::string first, again{};
  int times = 0;
  std::chrono::milliseconds pause{0};
  bool reset = false;  ///< the connection ends with a reset
};

/// The bytes of an answer without faults: its status with the headers given, and one with a body.
std::string httpHead(const std::string& status, const std::string& headers = {});
std::string httpWhole(const std::string& status, const std::string& body);

/// Serves one connection after the other on a thread of its own, from construction to destruction.
/// An answer ends early once the client is gone.
class FaultServer {
 public:
  /// Answers to requests by the last component of their path; anything else gets none.
  explicit FaultServer(std::map<std::string, Answer> answers);
  explicit FaultServer(const std::string& body)
      : FaultServer({{"ok", {httpWhole("200 OK", body)}}}) {}
  ~FaultServer();
  FaultServer(const FaultServer&) = delete;
  FaultServer& operator=(const FaultServer&) = delete;

  /// "http://127.0.0.1:<port>/<path>"
  std::string url(const std::string& path) const;

  /// An address that refuses connections while this server lives.
  std::string refusingUrl() const;

  int connections() const { return connections_; }

 private:
  void serve();
  void answer(int client) const;

  const std::map<std::string, Answer> answers_;
  int listener_ = -1;
  int silent_ = -1;  ///< bound, never listening
  int port_ = 0;
  int silentPort_ = 0;
  std::atomic<bool> stop_{false};
  std::atomic<int> connections_{0};
  std::thread thread_;
};
