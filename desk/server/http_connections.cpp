// The connections of the server: which of them there are, which wait, and which take too long.
#include <sys/socket.h>

#include <algorithm>
#include <utility>

#include "desk/server/http_exchange.h"

namespace desk::server {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::ptrdiff_t kMostPeers = 64;
constexpr int kMostUnread = 64 << 10;  ///< bytes that are sent to one that does not read them
constexpr std::size_t kMostAnswerBytes = std::size_t{256} << 20;

}  // namespace

void HttpServer::Callbacks::connection(void* self, MHD_Connection* connection, void** peer,
                                       MHD_ConnectionNotificationCode code) {
  auto& server = *static_cast<HttpServer*>(self);
  if (code == MHD_CONNECTION_NOTIFY_STARTED) {
    *peer = &server.addPeer(
        MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd);
  } else {
    server.removePeer(*static_cast<Peer*>(*peer));
  }
}

HttpServer::Peer& HttpServer::addPeer(int socket) {
  setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &kMostUnread, sizeof kMostUnread);
  const std::lock_guard<std::mutex> lock(mutex_);
  peers_.push_back({socket, Clock::now(), BodyBounds{}.time});
  const auto counts = [](const Peer& peer) { return !peer.waits && !peer.isLeaving; };
  if (std::count_if(peers_.begin(), peers_.end(), counts) > kMostPeers) {
    disconnect(*std::find_if(peers_.begin(), peers_.end(), counts));
  }
  return peers_.back();
}

void HttpServer::removePeer(Peer& peer) {
  const std::lock_guard<std::mutex> lock(mutex_);
  peers_.remove_if([&](const Peer& one) { return &one == &peer; });
}

/// Ends a connection; the library closes it. A request that has arrived may still be answered.
void HttpServer::disconnect(Peer& peer) {
  peer.isLeaving = true;
  shutdown(peer.socket, peer.hasAsked ? SHUT_RDWR : SHUT_RD);
}

HttpServer::Peer& HttpServer::peerOf(MHD_Connection* connection) {
  return *static_cast<Peer*>(
      MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT)->socket_context);
}

void HttpServer::grantTime(MHD_Connection* connection, std::chrono::seconds time) {
  const std::lock_guard<std::mutex> lock(mutex_);
  peerOf(connection).time = time;
}

/// Takes note of an answer, and closes the oldest ones that it leaves no room for.
void HttpServer::noteAnswer(MHD_Connection* connection, std::size_t bytes) {
  const std::lock_guard<std::mutex> lock(mutex_);
  Peer& reader = peerOf(connection);
  reader.answerBytes = bytes;
  std::size_t all = 0;
  for (const Peer& peer : peers_) all += peer.isLeaving ? 0 : peer.answerBytes;
  for (Peer& peer : peers_) {
    if (all <= kMostAnswerBytes) break;
    if (peer.isLeaving || peer.answerBytes == 0 || &peer == &reader) continue;
    all -= peer.answerBytes;
    disconnect(peer);
  }
}

void HttpServer::poll() {
  const std::lock_guard<std::mutex> lock(mutex_);
  for (MHD_Connection* connection : std::exchange(suspended_, {})) {
    MHD_resume_connection(connection);
  }
  const auto now = Clock::now();
  for (Peer& peer : peers_) {
    if (peer.hasAsked || now - peer.since <= peer.time) continue;
    // One that goes on sending is read on as long as there is something to read.
    if (peer.isLeaving) shutdown(peer.socket, SHUT_RDWR);
    disconnect(peer);
  }
}

bool HttpServer::anyoneWaits() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return std::any_of(peers_.begin(), peers_.end(), [](const Peer& peer) { return peer.waits; });
}

/// Call it with the mutex locked: a poll in between would be missed.
void HttpServer::suspend(MHD_Connection* connection) {
  peerOf(connection).waits = true;
  suspended_.push_back(connection);
  MHD_suspend_connection(connection);
}

}  // namespace desk::server
