// The page: what it is made of, what it may ask for, and who may ask.
#pragma once

#include <string>
#include <thread>

#include "desk/panel/board.h"
#include "desk/panel/http_server.h"

namespace desk {

/// What the page lets the operator do. Each call returns once that is done, and whether it was;
/// false when the panel is too busy. Comes from the server's threads.
struct PanelActions {
  std::function<bool(tagPOINT)> click;
  std::function<bool(Turn)> turn;
};

/// Serves the page on 127.0.0.1, to this machine's own pages and programs only: requests for
/// another host or from another origin are refused and change nothing.
class PanelServer {
 public:
  /// Takes the port, 0 for a free one. Throws Error when it is taken. Nothing is answered before
  /// `start`. The board must outlive the server.
  PanelServer(Board& board, PanelActions actions, int port);

  /// Closes the board, so that open event streams end, and stops serving.
  ~PanelServer();

  void start();

  std::string address() const;

 private:
  void addPage();
  void addActions();
  void addEvents();
  bool mayAsk(const httplib::Request& request) const;

  Board& board_;
  const PanelActions actions_;
  HttpServer server_;
  int port_;
  std::atomic<int> streams_{0};
  std::thread thread_;
};

}  // namespace desk
