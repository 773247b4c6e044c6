// A small HTTP server on 127.0.0.1 that nobody can keep busy by asking slowly.
#pragma once

#include <chrono>
#include <cstddef>
#include <list>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "desk/server/http_request.h"

struct MHD_Daemon;
struct MHD_Response;

namespace desk::server {

/// Serves one request per connection, all on one thread. The head of a request may take 16 KiB and
/// five seconds. Beyond 64 connections that ask or read, the oldest is closed; answers that come
/// later, and streams, do not count there. So is the oldest that reads, beyond 256 MiB of answers.
class HttpServer {
 public:
  using Headers = std::vector<std::pair<const char*, std::string>>;

  /// Takes the port, 0 for a free one. Throws Error when it is taken. Nothing is answered before
  /// `start`.
  /// @param headers sent with each answer
  HttpServer(int port, Headers headers, HttpHandlers handlers);

  /// Stops. By then the replies that wait must end when they are asked.
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  void start();
  int port() const { return port_; }

  /// Asks all replies that wait, and ends requests that take too long. To be called when there may
  /// be something for one of them, and twice a second. Safe on any thread.
  void poll();

 private:
  struct Callbacks;
  struct Exchange;
  struct Stream;

  /// A connection, from its beginning to its end.
  struct Peer {
    int socket;
    std::chrono::steady_clock::time_point since;
    std::chrono::seconds time;    ///< that its request may take
    std::size_t answerBytes = 0;  ///< kept for it until it is closed
    bool hasAsked = false;        ///< its request is complete
    bool waits = false;           ///< for an answer that comes later, or in a stream
    bool isLeaving = false;       ///< shut down, not yet closed
  };

  Peer& addPeer(int socket);
  void removePeer(Peer& peer);
  static void disconnect(Peer& peer);
  static Peer& peerOf(MHD_Connection* connection);
  void grantTime(MHD_Connection* connection, std::chrono::seconds time);
  void noteAnswer(MHD_Connection* connection, std::size_t bytes);

  int receiveHead(Exchange& exchange);
  int receiveBody(Exchange& exchange, const char* bytes, std::size_t size);
  int reply(Exchange& exchange);
  int replyLater(Exchange& exchange);
  int send(MHD_Connection* connection, HttpAnswer answer);
  int send(MHD_Connection* connection, AnswerStream stream);
  int send(MHD_Connection* connection, unsigned status, const std::string& type,
           MHD_Response* response);
  std::ptrdiff_t read(Stream& stream, char* bytes, std::size_t size);
  void suspend(MHD_Connection* connection);
  bool anyoneWaits();

  const Headers headers_;
  const HttpHandlers handlers_;
  int port_ = 0;
  const int listener_;  ///< the daemon's once that runs
  std::mutex mutex_;
  std::list<Peer> peers_;                   ///< the oldest first
  std::vector<MHD_Connection*> suspended_;  ///< of those that wait
  MHD_Daemon* daemon_ = nullptr;
};

}  // namespace desk::server
