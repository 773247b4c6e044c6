// The panel on a page of the browser.
#include <signal.h>
#include <sys/wait.h>

#include <cstdio>
#include <future>
#include <memory>
#include <thread>

#include "desk/base/errors.h"
#include "desk/panel/panel_server.h"
#include "desk/panel/process.h"
#include "desk/panel/sessions.h"
#include "desk/panel/strand.h"

namespace desk {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kCycle{50};  ///< the panel's own
constexpr int kCyclesPerLook = 4;   ///< at the files

std::atomic<bool> told{false};  ///< to end; set by a signal
static_assert(std::atomic<bool>::is_always_lock_free);

void endOnSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { told = true; };
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

/// A panel on a strand of its own, and what it shows on a board.
class LivePanel {
 public:
  LivePanel(const PanelSetup& setup, Console& console, Board& board)
      : board_(board), strand_([this] { idle(); }, kCycle) {
    begin([&] { panel_.emplace(setup.plugin, setup.facts, console, told); }).get();
    begin([this] {
      panel_->start();
      publish();
    });
  }

  ~LivePanel() { told = true; }  // what the script is at comes to an end
  LivePanel(const LivePanel&) = delete;
  LivePanel& operator=(const LivePanel&) = delete;

  /// Begins something with the panel. @return its end; not valid when the panel is too busy
  template <class Action>
  std::future<void> act(Action action) {
    return begin([this, action] {
      action(*panel_);
      publish();
    });
  }

 private:
  std::future<void> begin(Strand::Job job) {
    const auto task = std::make_shared<std::packaged_task<void()>>(std::move(job));
    std::future<void> end = task->get_future();
    const bool taken = strand_.post([this, task] {
      (*task)();
      board_.stir();
    });
    return taken ? std::move(end) : std::future<void>();
  }

  void idle() {
    if (!panel_) return;
    if (++cycles_ % kCyclesPerLook == 0) panel_->followFiles();
    publish();
  }

  void publish() {
    panel_->cycle();
    board_.publish(panel_->view());
  }

  Board& board_;
  std::optional<Panel> panel_;  ///< touched on the strand only, and once that has ended
  unsigned cycles_ = 0;
  Strand strand_;
};

/// The browser that is being opened, if it is.
class Browser {
 public:
  void open(const std::string& address) {
    child_ = startProcess({"xdg-open", address}, -1);
    if (child_ < 0) std::fprintf(stderr, "cusdesk: no xdg-open here: open the address yourself\n");
  }

  /// Lets the process that has opened it go.
  void look() {
    if (child_ > 0 && waitpid(child_, nullptr, WNOHANG) != 0) child_ = -1;
  }

 private:
  pid_t child_ = -1;
};

}  // namespace

int servePanel(const PanelSetup& setup, int port, bool open) {
  endOnSignals();
  Board board(setup.facts);
  Console console([&](Speaker speaker, const std::string& line) {
    board.say(speaker, line);
    if (speaker == Speaker::Error || setup.verbose) echo(speaker, line);
  });
  std::unique_ptr<LivePanel> live;
  const PanelActions actions = {
      [&](tagPOINT point) { return live->act([point](Panel& panel) { panel.click(point); }); },
      [&](Turn turn) { return live->act([turn](Panel& panel) { panel.turn(turn); }); },
  };
  PanelServer server(board, actions, port);
  live = std::make_unique<LivePanel>(setup, console, board);
  server.start();
  console.answer(server.address() + "\n");
  Browser browser;
  if (open) browser.open(server.address());
  while (!told) {
    std::this_thread::sleep_for(milliseconds(50));
    browser.look();
  }
  return kExitOk;
}

}  // namespace desk
