#include "desk/panel/http_server.h"

#include <microhttpd.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <utility>

#include "desk/base/errors.h"

namespace desk::panel {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostBytes = std::size_t{16} << 10;  ///< of a head, and of a body to be read
constexpr std::size_t kMostBody = 1024;
constexpr std::size_t kBlock = 4096;  ///< of a stream
constexpr std::chrono::seconds kRequestTime{5};
constexpr unsigned kIdleSeconds = 5;  ///< without a byte in either direction
constexpr unsigned kMostConnections = 512;
constexpr std::ptrdiff_t kMostPeers = 64;
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

MHD_Result addField(void* form, MHD_ValueKind, const char* key, const char*, const char*,
                    const char*, const char* bytes, std::uint64_t, std::size_t size) {
  (*static_cast<std::map<std::string, std::string>*>(form))[key].append(bytes, size);
  return MHD_YES;
}

HttpAnswer wentWrong() {
  return {MHD_HTTP_INTERNAL_SERVER_ERROR, "that went wrong\n", "text/plain; charset=utf-8"};
}

}  // namespace

HttpRequest::HttpRequest(MHD_Connection* connection, std::string method, std::string path)
    : connection_(connection), method_(std::move(method)), path_(std::move(path)) {}

std::string HttpRequest::header(const char* name) const {
  const char* value = MHD_lookup_connection_value(connection_, MHD_HEADER_KIND, name);
  return value != nullptr ? value : "";
}

int HttpRequest::headerCount(const char* name) const {
  std::pair<const char*, int> counted(name, 0);
  MHD_get_connection_values(
      connection_, MHD_HEADER_KIND,
      [](void* data, MHD_ValueKind, const char* key, const char*) {
        auto& [wanted, count] = *static_cast<std::pair<const char*, int>*>(data);
        if (strcasecmp(key, wanted) == 0) ++count;
        return MHD_YES;
      },
      &counted);
  return counted.second;
}

std::string HttpRequest::field(const char* name) const {
  const char* value = MHD_lookup_connection_value(connection_, MHD_GET_ARGUMENT_KIND, name);
  if (value != nullptr) return value;
  const auto found = form_.find(name);
  return found != form_.end() ? found->second : "";
}

/// One request and what has become of it.
struct HttpServer::Exchange {
  HttpRequest request;
  std::size_t received = 0;  ///< of the body
  MHD_PostProcessor* form = nullptr;
  LaterAnswer later{};

  ~Exchange() {
    if (form != nullptr) MHD_destroy_post_processor(form);
  }
};

struct HttpServer::Stream {
  HttpServer& server;
  MHD_Connection* connection;
  AnswerStream source;
  std::string text{};
  std::size_t sent = 0;
};

/// What the library calls. No exception may leave these.
struct HttpServer::Callbacks {
  static void connection(void* self, MHD_Connection* connection, void** peer,
                         MHD_ConnectionNotificationCode code) {
    auto& server = *static_cast<HttpServer*>(self);
    if (code == MHD_CONNECTION_NOTIFY_STARTED) {
      *peer = &server.addPeer(
          MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd);
    } else {
      server.removePeer(*static_cast<Peer*>(*peer));
    }
  }

  static void completed(void*, MHD_Connection*, void** exchange, MHD_RequestTerminationCode) {
    delete static_cast<Exchange*>(std::exchange(*exchange, nullptr));
  }

  static MHD_Result request(void* self, MHD_Connection* connection, const char* path,
                            const char* method, const char*, const char* bytes, std::size_t* size,
                            void** known) {
    auto& server = *static_cast<HttpServer*>(self);
    try {
      const bool isNew = *known == nullptr;
      if (isNew) *known = new Exchange{{connection, method, path}};
      auto& exchange = *static_cast<Exchange*>(*known);
      if (isNew) return static_cast<MHD_Result>(server.receiveHead(exchange));
      if (*size == 0) return static_cast<MHD_Result>(server.reply(exchange));
      return static_cast<MHD_Result>(server.receiveBody(exchange, bytes, std::exchange(*size, 0)));
    } catch (const std::exception&) {
      return static_cast<MHD_Result>(server.send(connection, wentWrong()));
    }
  }

  static ssize_t read(void* stream, std::uint64_t, char* bytes, std::size_t size) {
    auto& self = *static_cast<Stream*>(stream);
    try {
      return self.server.read(self, bytes, size);
    } catch (const std::exception&) {
      return MHD_CONTENT_READER_END_WITH_ERROR;
    }
  }

  static void endStream(void* stream) { delete static_cast<Stream*>(stream); }
};

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

// --- connections ---------------------------------------------------------------------------------

HttpServer::Peer& HttpServer::addPeer(int socket) {
  const std::lock_guard<std::mutex> lock(mutex_);
  peers_.push_back({socket, Clock::now()});
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

void HttpServer::poll() {
  const std::lock_guard<std::mutex> lock(mutex_);
  for (MHD_Connection* connection : std::exchange(suspended_, {})) {
    MHD_resume_connection(connection);
  }
  const auto latest = Clock::now() - kRequestTime;
  for (Peer& peer : peers_) {
    if (!peer.hasAsked && !peer.isLeaving && peer.since < latest) disconnect(peer);
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

// --- requests and answers ------------------------------------------------------------------------

int HttpServer::receiveHead(Exchange& exchange) {
  const HttpRequest& request = exchange.request;
  if (const auto refusal = handlers_.refuse(request)) return send(request.connection_, *refusal);
  const std::string length = request.header("Content-Length");
  if (std::strtoull(length.c_str(), nullptr, 10) > kMostBody) {
    return send(request.connection_, {MHD_HTTP_CONTENT_TOO_LARGE, {}, {}});
  }
  if (request.header("Content-Type").rfind(MHD_HTTP_POST_ENCODING_FORM_URLENCODED, 0) == 0) {
    exchange.form = MHD_create_post_processor(request.connection_, kMostBody, &addField,
                                              &exchange.request.form_);
  }
  return MHD_YES;
}

int HttpServer::receiveBody(Exchange& exchange, const char* bytes, std::size_t size) {
  exchange.received += size;
  if (exchange.received > kMostBytes) return MHD_NO;
  if (exchange.form != nullptr) MHD_post_process(exchange.form, bytes, size);
  return MHD_YES;
}

/// Answers a request that is complete. Called again when the answer had to wait.
int HttpServer::reply(Exchange& exchange) {
  if (exchange.later) return replyLater(exchange);
  MHD_Connection* const connection = exchange.request.connection_;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    peerOf(connection).hasAsked = true;
  }
  if (exchange.received > kMostBody) {
    return send(connection, {MHD_HTTP_CONTENT_TOO_LARGE, {}, {}});
  }
  if (exchange.form != nullptr) MHD_destroy_post_processor(std::exchange(exchange.form, nullptr));
  HttpReply reply = handlers_.answer(exchange.request);
  if (auto* answer = std::get_if<HttpAnswer>(&reply)) return send(connection, *answer);
  if (auto* stream = std::get_if<AnswerStream>(&reply)) return send(connection, std::move(*stream));
  exchange.later = std::get<LaterAnswer>(std::move(reply));
  return replyLater(exchange);
}

int HttpServer::replyLater(Exchange& exchange) {
  MHD_Connection* const connection = exchange.request.connection_;
  std::optional<HttpAnswer> answer;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    peerOf(connection).waits = false;
    answer = exchange.later();
    if (!answer) suspend(connection);
  }
  return answer ? send(connection, *answer) : MHD_YES;
}

std::ptrdiff_t HttpServer::read(Stream& stream, char* bytes, std::size_t size) {
  if (stream.sent == stream.text.size()) {
    const std::lock_guard<std::mutex> lock(mutex_);
    auto next = stream.source.next();
    if (!next) return MHD_CONTENT_READER_END_OF_STREAM;
    stream.text = std::move(*next);
    stream.sent = 0;
    if (stream.text.empty()) {
      suspend(stream.connection);
      return 0;
    }
  }
  const std::size_t count = stream.text.copy(bytes, size, stream.sent);
  stream.sent += count;
  return static_cast<std::ptrdiff_t>(count);
}

int HttpServer::send(MHD_Connection* connection, const HttpAnswer& answer) {
  return send(
      connection, answer.status, answer.type,
      MHD_create_response_from_buffer(answer.body.size(), const_cast<char*>(answer.body.data()),
                                      MHD_RESPMEM_MUST_COPY));
}

int HttpServer::send(MHD_Connection* connection, AnswerStream stream) {
  const std::string type = stream.type;
  return send(connection, MHD_HTTP_OK, type,
              MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, kBlock, &Callbacks::read,
                                                new Stream{*this, connection, std::move(stream)},
                                                &Callbacks::endStream));
}

int HttpServer::send(MHD_Connection* connection, unsigned status, const std::string& type,
                     MHD_Response* response) {
  for (const auto& [name, value] : headers_) MHD_add_response_header(response, name, value);
  MHD_add_response_header(response, MHD_HTTP_HEADER_CONNECTION, "close");
  if (!type.empty()) {
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, type.c_str());
  }
  const int queued = MHD_queue_response(connection, status, response);
  MHD_destroy_response(response);
  return queued;
}

}  // namespace desk::panel
