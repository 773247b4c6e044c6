// What the server keeps of a request until it is answered. For its own sources.
#pragma once

#include <microhttpd.h>

#include <cstddef>
#include <string>

#include "desk/server/http_server.h"

namespace desk::server {

/// Of a head, and of a body that is read although it is too long, for an answer that says so.
constexpr std::size_t kMostBytes = std::size_t{16} << 10;

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
                         MHD_ConnectionNotificationCode code);
  static void completed(void*, MHD_Connection*, void** exchange, MHD_RequestTerminationCode);
  static MHD_Result request(void* self, MHD_Connection* connection, const char* path,
                            const char* method, const char*, const char* bytes, std::size_t* size,
                            void** known);
  static ssize_t read(void* stream, std::uint64_t, char* bytes, std::size_t size);
  static void endStream(void* stream);
};

}  // namespace desk::server
