// Fuzz target: requests to the panel's page, as bytes on a connection.
//
// "PORT" in an input stands for the server's port. Whatever is asked, an answer must be one that
// browsers cannot misuse, and nothing may happen to the panel unless the request names the server
// as its host and its origin.
#include <arpa/inet.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <set>
#include <utility>

#include "desk/panel/panel_server.h"
#include "fuzz/surroundings.h"
#include "fuzz/target.h"

namespace {

using fuzzing::require;

constexpr int kMostPixels = 999999;
constexpr char kNews[] = "a line of <b>output</b>";

/// A panel that only notes what it was asked to do.
class Page {
 public:
  Page() : board_({"script.lua", "job.json", 800, 480}), server_(board_, actions(), 0) {
    board_.say(desk::Speaker::Script, kNews);
    startUndisturbed();
    const std::string address = server_.address();
    port_ = address.substr(address.rfind(':') + 1);
    port_.pop_back();
  }

  const std::string& port() const { return port_; }

  /// How often something was done since the last call.
  int takeActions() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return std::exchange(done_, 0);
  }

 private:
  /// The fuzzer's clock is a signal, which is to interrupt its own thread and none of the server's.
  void startUndisturbed() {
    sigset_t clock, before;
    sigemptyset(&clock);
    sigaddset(&clock, SIGALRM);
    pthread_sigmask(SIG_BLOCK, &clock, &before);
    server_.start();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
  }

  desk::PanelActions actions() {
    return {[this](tagPOINT point) {
              require(point.x >= 0 && point.x <= kMostPixels, "x is no pixel");
              require(point.y >= 0 && point.y <= kMostPixels, "y is no pixel");
              return act();
            },
            [this](desk::Turn) { return act(); }};
  }

  bool act() {
    const std::lock_guard<std::mutex> lock(mutex_);
    ++done_;
    return true;
  }

  desk::Board board_;
  std::mutex mutex_;
  int done_ = 0;
  std::string port_;
  desk::PanelServer server_;
};

Page& page() {
  static Page instance;
  return instance;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

/// Whether `answer` is one that never ends, with something in it.
bool isStream(const std::string& answer) {
  return answer.find("text/event-stream") != std::string::npos &&
         answer.find("data: ") != std::string::npos;
}

/// Sends all of `request` on a new connection and returns all that comes back, of a stream the
/// beginning.
std::string exchange(const std::string& request) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(page().port())));
  const int connection = ::socket(AF_INET, SOCK_STREAM, 0);
  while (::connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    if (errno == EISCONN) break;  // after an interruption
    require(errno == EINTR, std::strerror(errno));
  }
  (void)TEMP_FAILURE_RETRY(::send(connection, request.data(), request.size(), MSG_NOSIGNAL));
  ::shutdown(connection, SHUT_WR);
  std::string answer;
  char bytes[4096];
  for (ssize_t got = 0;
       !isStream(answer) &&
       (got = TEMP_FAILURE_RETRY(::recv(connection, bytes, sizeof bytes, 0))) > 0;) {
    answer.append(bytes, static_cast<std::size_t>(got));
  }
  ::close(connection);
  return answer;
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

/// Whether the request has anything that a browser's request from the page itself has.
bool isOwn(const std::string& request) {
  const std::string text = lowerCase(request);
  for (const char* host : {"127.0.0.1:", "localhost:"}) {
    const std::string name = host + page().port();
    if (text.find("host:") != std::string::npos && text.find(name) != std::string::npos &&
        text.find("http://" + name) != std::string::npos) {
      return text.find("origin:") != std::string::npos;
    }
  }
  return false;
}

void judge(std::string answer) {
  static const std::string goOn = "HTTP/1.1 100 Continue\r\n\r\n";
  if (answer.compare(0, goOn.size(), goOn) == 0) answer.erase(0, goOn.size());
  if (answer.empty()) return;
  static const std::set<std::string> statuses = {"200", "204", "206", "400", "403",
                                                 "404", "413", "414", "416", "503"};
  require(answer.compare(0, 9, "HTTP/1.1 ") == 0, "an answer that is not HTTP");
  require(statuses.count(answer.substr(9, 3)) == 1, "an unforeseen status");
  const std::string head = answer.substr(0, answer.find("\r\n\r\n"));
  require(head.size() < answer.size(), "an answer whose head does not end");
  require(head.find("\r\nContent-Security-Policy: default-src 'none'") != std::string::npos,
          "an answer without the content security policy");
  require(head.find("\r\nX-Content-Type-Options: nosniff") != std::string::npos,
          "an answer whose type may be guessed");
  require(lowerCase(head).find("access-control-allow") == std::string::npos,
          "an answer that lets other pages in");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzzing::setUpServices();
  page();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::string request = replaced(input, "PORT", page().port());
  judge(exchange(request));
  const int done = page().takeActions();
  require(done <= 1, "one connection did several things");
  require(done == 0 || isOwn(request), "a request from elsewhere did something");
  return 0;
}

std::size_t fuzzing::slotCount() {
  return 0;
}
