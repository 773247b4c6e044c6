// The requests to the server and what they are answered with.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "desk/server/http_exchange.h"

namespace desk::server {

namespace {

constexpr std::size_t kMostForm = 1024;
constexpr std::size_t kBlock = 4096;  ///< of a stream

MHD_Result addField(void* form, MHD_ValueKind, const char* key, const char*, const char*,
                    const char*, const char* bytes, std::uint64_t, std::size_t size) {
  (*static_cast<std::map<std::string, std::string>*>(form))[key].append(bytes, size);
  return MHD_YES;
}

constexpr char kText[] = "text/plain; charset=utf-8";

HttpAnswer wentWrong() {
  return {MHD_HTTP_INTERNAL_SERVER_ERROR, "that went wrong\n", kText};
}

HttpAnswer tooLarge(const BodyBounds& bounds) {
  return {MHD_HTTP_CONTENT_TOO_LARGE, bounds.tooLarge, kText};
}

}  // namespace

MHD_Result HttpServer::Callbacks::request(void* self, MHD_Connection* connection, const char* path,
                                          const char* method, const char*, const char* bytes,
                                          std::size_t* size, void** known) {
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

void HttpServer::Callbacks::completed(void*, MHD_Connection*, void** exchange,
                                      MHD_RequestTerminationCode) {
  delete static_cast<Exchange*>(std::exchange(*exchange, nullptr));
}

ssize_t HttpServer::Callbacks::read(void* stream, std::uint64_t, char* bytes, std::size_t size) {
  auto& self = *static_cast<Stream*>(stream);
  try {
    return self.server.read(self, bytes, size);
  } catch (const std::exception&) {
    return MHD_CONTENT_READER_END_WITH_ERROR;
  }
}

void HttpServer::Callbacks::endStream(void* stream) {
  delete static_cast<Stream*>(stream);
}

int HttpServer::receiveHead(Exchange& exchange) {
  HttpRequest& request = exchange.request;
  auto admitted = handlers_.admit(request);
  if (auto* refusal = std::get_if<HttpAnswer>(&admitted)) {
    return send(request.connection_, std::move(*refusal));
  }
  request.bounds_ = std::get<BodyBounds>(std::move(admitted));
  const auto length = std::strtoull(request.header("Content-Length").c_str(), nullptr, 10);
  if (length > request.bounds_.bytes) {
    return send(request.connection_, tooLarge(request.bounds_));
  }
  grantTime(request.connection_, request.bounds_.time);
  if (request.header("Content-Type").rfind(MHD_HTTP_POST_ENCODING_FORM_URLENCODED, 0) == 0) {
    exchange.form =
        MHD_create_post_processor(request.connection_, kMostForm, &addField, &request.form_);
  } else {
    request.body_.reserve(static_cast<std::size_t>(length));
  }
  return MHD_YES;
}

int HttpServer::receiveBody(Exchange& exchange, const char* bytes, std::size_t size) {
  exchange.received += size;
  if (exchange.received > std::max(exchange.request.bounds_.bytes, kMostBytes)) return MHD_NO;
  if (exchange.form != nullptr) {
    MHD_post_process(exchange.form, bytes, size);
  } else if (exchange.received <= exchange.request.bounds_.bytes) {
    exchange.request.body_.append(bytes, size);
  }
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
  if (exchange.received > exchange.request.bounds_.bytes) {
    return send(connection, tooLarge(exchange.request.bounds_));
  }
  if (exchange.form != nullptr) MHD_destroy_post_processor(std::exchange(exchange.form, nullptr));
  HttpReply reply = handlers_.answer(exchange.request);
  if (auto* answer = std::get_if<HttpAnswer>(&reply)) return send(connection, std::move(*answer));
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
  return answer ? send(connection, std::move(*answer)) : MHD_YES;
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

int HttpServer::send(MHD_Connection* connection, HttpAnswer answer) {
  using Body = std::shared_ptr<const std::string>;
  auto* const body = new Body(std::move(answer.shared));
  if (*body == nullptr) *body = std::make_shared<std::string>(std::move(answer.body));
  noteAnswer(connection, (*body)->size());
  return send(connection, answer.status, answer.type,
              MHD_create_response_from_buffer_with_free_callback_cls(
                  (*body)->size(), const_cast<char*>((*body)->data()),
                  [](void* sent) { delete static_cast<Body*>(sent); }, body));
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
  for (const auto& [name, value] : headers_) MHD_add_response_header(response, name, value.c_str());
  MHD_add_response_header(response, MHD_HTTP_HEADER_CONNECTION, "close");
  if (!type.empty()) {
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, type.c_str());
  }
  const int queued = MHD_queue_response(connection, status, response);
  MHD_destroy_response(response);
  return queued;
}

}  // namespace desk::server
