// The page: what it is made of, what it may ask for, and who may ask.
#pragma once

#include <atomic>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <thread>

#include "desk/server/http_server.h"
#include "desk/server/page_state.h"

namespace desk::server {

/// What the page lets the operator do. Each call begins that and returns its end, a future that is
/// not valid when the panel is too busy. They come from the server's thread and must not block;
/// `PageState::notify` tells that something has ended.
struct PanelActions {
  std::function<std::future<void>(tagPOINT)> click;
  std::function<std::future<void>(panel::Turn)> turn;
};

/// Serves the page on 127.0.0.1, to this machine's own pages and programs only: requests for
/// another host or from another origin are refused and change nothing.
class PageServer {
 public:
  /// Takes the port, 0 for a free one. Throws Error when it is taken. Nothing is answered before
  /// `start`. The state must outlive the server.
  PageServer(PageState& state, PanelActions actions, int port);

  /// Closes the state, so that open event streams end, and stops serving.
  ~PageServer();

  void start();

  std::string address() const;

 private:
  std::optional<HttpAnswer> refusal(const HttpRequest& request) const;
  HttpReply answer(const HttpRequest& request);
  HttpReply click(const HttpRequest& request) const;
  HttpReply turn(const HttpRequest& request) const;
  HttpReply events(const HttpRequest& request);
  LaterAnswer answerAtEnd(std::future<void> end) const;
  bool mayAsk(const HttpRequest& request) const;
  void followState();

  PageState& state_;
  const PanelActions actions_;
  std::atomic<int> streams_{0};
  HttpServer server_;
  std::thread follower_;
};

}  // namespace desk::server
