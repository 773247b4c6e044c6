// The page: what it is made of, what it may ask for, and who may ask.
#pragma once

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <variant>

#include "desk/server/http_server.h"
#include "desk/server/page_state.h"

namespace desk::server {

/// What pages ask of panel and jobs. Each call begins that and returns the answer's future, which
/// is not valid when too much is asked at once. They come from the server's thread and must not
/// block; `PageState::notify` tells that an answer has come.
struct PageActions {
  std::function<std::future<HttpAnswer>(tagPOINT)> click;
  std::function<std::future<HttpAnswer>(panel::Turn)> turn;
  std::function<std::future<HttpAnswer>(JobQuestion)> ask;
  std::function<std::future<HttpAnswer>(DroppedJob)> drop;
};

/// Serves the page on 127.0.0.1, to this machine's own pages and programs only: requests for
/// another host or from another origin are refused and change nothing.
class PageServer {
 public:
  /// Takes the port, 0 for a free one. Throws Error when it is taken. Nothing is answered before
  /// `start`. The state must outlive the server.
  PageServer(PageState& state, PageActions actions, int port);

  /// Closes the state, so that open event streams end, and stops serving.
  ~PageServer();

  void start();

  std::string address() const;

 private:
  std::variant<BodyBounds, HttpAnswer> admit(const HttpRequest& request) const;
  std::variant<BodyBounds, HttpAnswer> admitDrop(const HttpRequest& request) const;
  HttpReply answer(HttpRequest& request);
  HttpReply change(HttpRequest& request) const;
  HttpReply show(const HttpRequest& request);
  HttpReply click(const HttpRequest& request) const;
  HttpReply turn(const HttpRequest& request) const;
  HttpReply events(const HttpRequest& request);
  bool mayAsk(const HttpRequest& request) const;
  void followState();

  PageState& state_;
  const PageActions actions_;
  std::atomic<int> streams_{0};
  /// How many jobs are being sent or wait to be read; outlives the server with these.
  const std::shared_ptr<std::atomic<int>> uploads_ = std::make_shared<std::atomic<int>>(0);
  HttpServer server_;
  std::thread follower_;
};

}  // namespace desk::server
