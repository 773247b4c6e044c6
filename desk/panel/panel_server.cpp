#include "desk/panel/panel_server.h"

#include <cctype>
#include <memory>
#include <utility>

#include "desk/base/errors.h"
#include "desk/panel/page_files.h"

namespace desk {

namespace {

using std::chrono::milliseconds;

constexpr char kAddress[] = "127.0.0.1";
constexpr int kMostStreams = 8;
constexpr milliseconds kBeat{1000};  ///< between two looks whether a reader is still there
constexpr milliseconds kBundle{20};  ///< news that come together go together

const httplib::Headers kHeaders = {
    {"Content-Security-Policy",
     "default-src 'none'; img-src 'self'; style-src 'self'; script-src 'self'; connect-src 'self'; "
     "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    {"Referrer-Policy", "no-referrer"},
    {"Cache-Control", "no-store"},
};

void refuse(httplib::Response& answer, int status, const char* reason) {
  answer.status = status;
  answer.set_content(std::string(reason) + "\n", "text/plain; charset=utf-8");
}

/// A coordinate of the picture: up to six digits and nothing else.
bool readCoordinate(const httplib::Request& request, const char* name, int& value) {
  const std::string text = request.get_param_value(name);
  if (text.empty() || text.size() > 6) return false;
  value = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') return false;
    value = value * 10 + (digit - '0');
  }
  return true;
}

void finish(httplib::Response& answer, bool done) {
  if (done) {
    answer.status = 204;
  } else {
    refuse(answer, 503, "the script is busy");
  }
}

}  // namespace

PanelServer::PanelServer(Board& board, PanelActions actions, int port)
    : board_(board), actions_(std::move(actions)), port_(port) {
  server_.set_default_headers(kHeaders);
  server_.set_pre_routing_handler(
      [this](const httplib::Request& request, httplib::Response& answer) {
        if (mayAsk(request)) return httplib::Server::HandlerResponse::Unhandled;
        refuse(answer, 403, "only this machine's own pages may ask for that");
        return httplib::Server::HandlerResponse::Handled;
      });
  server_.set_exception_handler([](const httplib::Request&, httplib::Response& answer,
                                   std::exception_ptr) { refuse(answer, 500, "that went wrong"); });
  addPage();
  addActions();
  addEvents();
  const bool bound = port == 0 ? (port_ = server_.bind_to_any_port(kAddress)) > 0
                               : server_.bind_to_port(kAddress, port);
  if (!bound) throw Error(kExitIoError, "port " + std::to_string(port) + " is taken");
}

PanelServer::~PanelServer() {
  board_.close();
  server_.refuseRequests();
  server_.stop();
  if (thread_.joinable()) thread_.join();
}

void PanelServer::start() {
  thread_ = std::thread([this] { server_.listen_after_bind(); });
}

std::string PanelServer::address() const {
  return std::string("http://") + kAddress + ":" + std::to_string(port_) + "/";
}

/// Whether host and origin are this server's own. Whoever changes something must name the origin,
/// as browsers do.
bool PanelServer::mayAsk(const httplib::Request& request) const {
  const std::string port = port_ == 80 ? "" : ":" + std::to_string(port_);
  const std::string host = request.get_header_value("Host");
  if (request.get_header_value_count("Host") != 1) return false;
  if (host != kAddress + port && host != "localhost" + port) return false;
  if (request.has_header("Origin")) {
    return request.get_header_value_count("Origin") == 1 &&
           request.get_header_value("Origin") == "http://" + host;
  }
  if (request.method != "GET" && request.method != "HEAD") return false;
  const std::string site = request.get_header_value("Sec-Fetch-Site");
  return site.empty() || site == "same-origin" || site == "none" ||
         request.get_header_value("Sec-Fetch-Mode") == "navigate";
}

void PanelServer::addPage() {
  for (const PageFile& file : pageFiles()) {
    server_.Get(file.path, [&file](const httplib::Request&, httplib::Response& answer) {
      answer.set_content(file.bytes, file.size, file.type);
    });
  }
  server_.Get("/picture\\.svg", [this](const httplib::Request&, httplib::Response& answer) {
    const std::string picture = board_.picture();
    if (picture.empty()) return refuse(answer, 404, "nothing has been drawn yet");
    answer.set_content(picture, "image/svg+xml");
  });
}

void PanelServer::addActions() {
  server_.Post("/click", [this](const httplib::Request& request, httplib::Response& answer) {
    tagPOINT point{};
    if (!readCoordinate(request, "x", point.x) || !readCoordinate(request, "y", point.y)) {
      return refuse(answer, 400, "x and y in pixels expected");
    }
    finish(answer, actions_.click(point));
  });
  server_.Post("/page", [this](const httplib::Request& request, httplib::Response& answer) {
    const std::string turn = request.get_param_value("turn");
    if (turn != "up" && turn != "down") return refuse(answer, 400, "turn=up or turn=down expected");
    finish(answer, actions_.turn(turn == "up" ? Turn::Up : Turn::Down));
  });
}

void PanelServer::addEvents() {
  server_.Get("/events", [this](const httplib::Request&, httplib::Response& answer) {
    const auto slot = std::shared_ptr<void>(nullptr, [this](void*) { --streams_; });
    if (++streams_ > kMostStreams) return refuse(answer, 503, "too many pages are open");
    answer.set_chunked_content_provider(
        "text/event-stream",
        [this, slot, cursor = Board::Cursor()](std::size_t, httplib::DataSink& sink) mutable {
          std::string event = ":\n\n";  // a comment, so that a dead connection shows
          if (board_.wait(cursor, kBeat)) {
            std::this_thread::sleep_for(kBundle);
            event = "data: " + board_.news(cursor) + "\n\n";
          }
          if (board_.isClosed() || !sink.is_writable()) return false;
          return sink.write(event.data(), event.size());
        });
  });
}

}  // namespace desk
