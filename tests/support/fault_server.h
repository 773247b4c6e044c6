// An HTTP server on the loopback that fails in every way a downloader must survive.
#pragma once

#include <atomic>
#include <string>
#include <thread>

/// Serves one connection after the other on a thread of its own, from construction to destruction.
/// The path of a request chooses the answer; see the table in the source file. Every answer is
/// bounded in size and time, and ends early once the client is gone.
class FaultServer {
 public:
  explicit FaultServer(std::string body);
  ~FaultServer();
  FaultServer(const FaultServer&) = delete;
  FaultServer& operator=(const FaultServer&) = delete;

  /// "http://127.0.0.1:<port>/<fault>"
  std::string url(const std::string& fault) const;

  /// An address that refuses connections while this server lives.
  std::string refusingUrl() const;

  int port() const { return port_; }
  int connections() const { return connections_; }

 private:
  void serve();
  void answer(int client) const;

  const std::string body_;
  int listener_ = -1;
  int silent_ = -1;  ///< bound, never listening
  int port_ = 0;
  int silentPort_ = 0;
  std::atomic<bool> stop_{false};
  std::atomic<int> connections_{0};
  std::thread thread_;
};
