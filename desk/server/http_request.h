// What a small HTTP server is asked and what it answers.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

struct MHD_Connection;

namespace desk::server {

/// What a request may send, and how long it may take for that.
struct BodyBounds {
  std::size_t bytes = 1024;
  std::chrono::seconds time{5};
  std::string tooLarge{};        ///< what is said of more bytes
  std::shared_ptr<void> held{};  ///< for as long as the server has the request
};

/// A request. Its form fields are there once its body has been read.
class HttpRequest {
 public:
  HttpRequest(MHD_Connection* connection, std::string method, std::string path);

  const std::string& method() const { return method_; }
  const std::string& path() const { return path_; }  ///< decoded, without the query

  /// The first header of that name; "" without one.
  std::string header(const char* name) const;
  int headerCount(const char* name) const;

  /// The fields of the query; of several with one name the last.
  std::map<std::string, std::string> query() const;

  /// The value of a field of the query or else of the form in the body; "" without one.
  std::string field(const char* name) const;

  /// Takes what was sent, unless that was a form.
  std::string takeBody() { return std::move(body_); }

  /// What `BodyBounds` held for it.
  const std::shared_ptr<void>& held() const { return bounds_.held; }

 private:
  friend class HttpServer;
  MHD_Connection* const connection_;
  const std::string method_;
  const std::string path_;
  std::map<std::string, std::string> form_;
  BodyBounds bounds_;
  std::string body_;
};

struct HttpAnswer {
  unsigned status;
  std::string body;
  std::string type;                             ///< media type; empty: none is sent
  std::shared_ptr<const std::string> shared{};  ///< the body, if several answers have the same
};

/// An answer that is not there yet: asked again at each `HttpServer::poll` until it is.
using LaterAnswer = std::function<std::optional<HttpAnswer>()>;

/// An answer that goes on, with status 200. `next` is asked at each `poll` for what is to be sent:
/// "" for nothing now, nothing for the end.
struct AnswerStream {
  std::string type;
  std::function<std::optional<std::string>()> next;
};

using HttpReply = std::variant<HttpAnswer, LaterAnswer, AnswerStream>;

/// What the server answers. All are called on one thread or under one lock, and must not block. An
/// exception is answered with status 500.
struct HttpHandlers {
  /// Called when the head has come; an answer refuses the request before its body is read.
  std::function<std::variant<BodyBounds, HttpAnswer>(const HttpRequest&)> admit;
  std::function<HttpReply(HttpRequest&)> answer;
};

}  // namespace desk::server
