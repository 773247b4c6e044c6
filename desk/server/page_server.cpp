#include "desk/server/page_server.h"

#include <memory>
#include <optional>
#include <utility>

#include "desk/base/files.h"
#include "desk/base/text.h"
#include "desk/host/documents.h"
#include "desk/host/settings.h"
#include "desk/server/page_files.h"
#include "desk/show/cut_list.h"

namespace desk::server {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr char kAddress[] = "127.0.0.1";
constexpr char kText[] = "text/plain; charset=utf-8";
constexpr int kMostStreams = 8;
constexpr int kMostUploads = 2;
constexpr std::size_t kLongestName = 255;  ///< of a file, in bytes
constexpr seconds kUploadTime{30};
constexpr milliseconds kBeat{1000};     ///< between two signs of life to a reader
constexpr milliseconds kPollTime{500};  ///< between two polls, at most
constexpr milliseconds kBundle{20};     ///< changes that come together go together

/// How long an answer is waited for, and what is said without one.
struct Patience {
  seconds time;
  const char* text;
};
constexpr Patience kWithScript = {seconds(5), "the script is busy\n"};
constexpr Patience kWithJobs = {seconds(120), "too much is asked at once: try again\n"};

const HttpServer::Headers kHeaders = {
    {"Content-Security-Policy",
     "default-src 'none'; img-src 'self'; style-src 'self' " + show::cutListStyle() +
         "; script-src 'self'; connect-src 'self'; base-uri 'none'; form-action 'none'; "
         "frame-ancestors 'none'"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    {"Referrer-Policy", "no-referrer"},
    {"Cache-Control", "no-store"},
};

/// Up to six digits and nothing else.
bool readNumber(const std::string& text, int& value) {
  if (text.empty() || text.size() > 6) return false;
  if (text.find_first_not_of("0123456789") != std::string::npos) return false;
  value = std::stoi(text);
  return true;
}

/// What "/job/2/findings" asks; nothing for another path.
std::optional<JobQuestion> questionOf(const HttpRequest& request) {
  const std::string start = "/job/";
  const std::string& path = request.path();
  const std::size_t end = path.find('/', start.size());
  JobQuestion question{};
  if (!startsWith(path, start) || end == std::string::npos ||
      !readNumber(path.substr(start.size(), end - start.size()), question.id)) {
    return std::nullopt;
  }
  question.what = path.substr(end + 1);
  question.query = request.query();
  question.version = question.query["version"];
  question.query.erase("version");
  return question;
}

bool isFileName(const std::string& name) {
  return !name.empty() && name.size() <= kLongestName && name != kStandardStream &&
         name.find('/') == std::string::npos;
}

const PageFile* findPageFile(const std::string& path) {
  // What browsers ask for when they show the picture by itself.
  const std::string wanted = path == "/favicon.ico" ? "/icon.svg" : path;
  for (const PageFile& file : pageFiles()) {
    if (wanted == file.path) return &file;
  }
  return nullptr;
}

/// The answer once it is there, unless it takes too long or the page ends.
LaterAnswer answerOf(std::future<HttpAnswer> answer, const Patience& patience, PageState& state) {
  const auto shared = std::make_shared<std::future<HttpAnswer>>(std::move(answer));
  return [&, shared, end = Clock::now() + patience.time]() -> std::optional<HttpAnswer> {
    if (shared->valid() && shared->wait_for(milliseconds(0)) == std::future_status::ready) {
      return shared->get();
    }
    if (shared->valid() && Clock::now() < end && !state.isClosed()) return std::nullopt;
    return HttpAnswer{503, patience.text, kText};
  };
}

}  // namespace

PageServer::PageServer(PageState& state, PageActions actions, int port)
    : state_(state),
      actions_(std::move(actions)),
      server_(port, kHeaders,
              {[this](const HttpRequest& request) { return admit(request); },
               [this](HttpRequest& request) { return answer(request); }}) {}

PageServer::~PageServer() {
  state_.close();
  if (follower_.joinable()) follower_.join();
}

void PageServer::start() {
  server_.start();
  follower_ = std::thread([this] { followState(); });
}

std::string PageServer::address() const {
  return std::string("http://") + kAddress + ":" + std::to_string(server_.port()) + "/";
}

void PageServer::followState() {
  for (std::uint64_t seen = 0; !state_.isClosed();) {
    seen = state_.wait(seen, kPollTime);
    std::this_thread::sleep_for(kBundle);
    server_.poll();
  }
}

/// Whether host and origin are this server's own. Whoever changes something must name the origin,
/// as browsers do.
bool PageServer::mayAsk(const HttpRequest& request) const {
  const std::string port = server_.port() == 80 ? "" : ":" + std::to_string(server_.port());
  const std::string host = request.header("Host");
  if (request.headerCount("Host") != 1) return false;
  if (host != kAddress + port && host != "localhost" + port) return false;
  if (const int origins = request.headerCount("Origin")) {
    return origins == 1 && request.header("Origin") == "http://" + host;
  }
  if (request.method() != "GET" && request.method() != "HEAD") return false;
  const std::string site = request.header("Sec-Fetch-Site");
  return site.empty() || site == "same-origin" || site == "none" ||
         request.header("Sec-Fetch-Mode") == "navigate";
}

std::variant<BodyBounds, HttpAnswer> PageServer::admit(const HttpRequest& request) const {
  if (!mayAsk(request)) {
    return HttpAnswer{403, "only this machine's own pages may ask for that\n", kText};
  }
  if (request.method() == "POST" && request.path() == "/drop") return admitDrop(request);
  return BodyBounds{};
}

std::variant<BodyBounds, HttpAnswer> PageServer::admitDrop(const HttpRequest& request) const {
  const std::string name = request.field("name");
  if (!isFileName(name)) return HttpAnswer{400, "name=FILE expected\n", kText};
  const std::shared_ptr<void> slot(nullptr, [uploads = uploads_](void*) { --*uploads; });
  if (++*uploads_ > kMostUploads) {
    return HttpAnswer{503, "other jobs are still being sent\n", kText};
  }
  const std::string tooLarge = cannotRead(escapeControls(name), deskhost::tooLargeReason()).what();
  return BodyBounds{deskhost::settings().maxDocumentBytes, kUploadTime, tooLarge + "\n", slot};
}

HttpReply PageServer::answer(HttpRequest& request) {
  const std::string& method = request.method();
  if (method == "POST") return change(request);
  if (method == "GET" || method == "HEAD") return show(request);
  return HttpAnswer{404, {}, {}};
}

HttpReply PageServer::change(HttpRequest& request) const {
  const std::string& path = request.path();
  if (path == "/click") return click(request);
  if (path == "/page") return turn(request);
  if (path != "/drop") return HttpAnswer{404, {}, {}};
  return answerOf(actions_.drop({request.field("name"), request.takeBody(), request.held()}),
                  kWithJobs, state_);
}

HttpReply PageServer::show(const HttpRequest& request) {
  const std::string& path = request.path();
  if (path == "/events") return events(request);
  if (path == "/picture.svg") {
    const std::string picture = state_.picture();
    if (picture.empty()) return HttpAnswer{404, "nothing has been drawn yet\n", kText};
    return HttpAnswer{200, picture, "image/svg+xml"};
  }
  if (const PageFile* file = findPageFile(path)) {
    return HttpAnswer{200, {file->bytes, file->size}, file->type};
  }
  if (auto question = questionOf(request)) {
    return answerOf(actions_.ask(*std::move(question)), kWithJobs, state_);
  }
  return HttpAnswer{404, {}, {}};
}

HttpReply PageServer::click(const HttpRequest& request) const {
  tagPOINT point{};
  if (!readNumber(request.field("x"), point.x) || !readNumber(request.field("y"), point.y)) {
    return HttpAnswer{400, "x and y in pixels expected\n", kText};
  }
  return answerOf(actions_.click(point), kWithScript, state_);
}

HttpReply PageServer::turn(const HttpRequest& request) const {
  const std::string turn = request.field("turn");
  if (turn != "up" && turn != "down") {
    return HttpAnswer{400, "turn=up or turn=down expected\n", kText};
  }
  return answerOf(actions_.turn(turn == "up" ? panel::Turn::Up : panel::Turn::Down), kWithScript,
                  state_);
}

HttpReply PageServer::events(const HttpRequest& request) {
  const auto slot = std::shared_ptr<void>(nullptr, [this](void*) { --streams_; });
  if (++streams_ > kMostStreams) return HttpAnswer{503, "too many pages are open\n", kText};
  constexpr char kType[] = "text/event-stream";
  if (request.method() == "HEAD") return HttpAnswer{200, {}, kType};
  return AnswerStream{kType,
                      [this, slot, cursor = PageState::Cursor(),
                       last = Clock::now()]() mutable -> std::optional<std::string> {
                        if (state_.isClosed()) return std::nullopt;
                        const std::string changes = state_.changesSince(cursor);
                        if (changes.empty() && Clock::now() < last + kBeat) return "";
                        last = Clock::now();
                        if (changes.empty())
                          return ":\n\n";  // a comment, so that a dead connection shows
                        return "data: " + changes + "\n\n";
                      }};
}

}  // namespace desk::server
