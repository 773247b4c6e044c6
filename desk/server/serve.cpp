#include "desk/server/serve.h"

#include <signal.h>
#include <sys/wait.h>

#include <cstdio>
#include <future>
#include <memory>
#include <thread>

#include "desk/base/errors.h"
#include "desk/panel/other_programs.h"
#include "desk/panel/panel.h"
#include "desk/server/page_server.h"
#include "desk/server/worker.h"

namespace desk::server {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kCycle{50};  ///< the panel's own
constexpr int kCyclesPerFileCheck = 4;

std::atomic<bool> stopRequested{false};  ///< set by a signal
static_assert(std::atomic<bool>::is_always_lock_free);

void endOnSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { stopRequested = true; };
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

/// A panel on a thread of its own, which publishes what it shows.
class LivePanel {
 public:
  LivePanel(const panel::PanelSetup& setup, panel::Console& console, PageState& state)
      : state_(state), worker_([this] { idle(); }, kCycle) {
    begin([&] { panel_.emplace(setup.plugin, setup.facts, console, stopRequested); }).get();
    begin([this] {
      panel_->start();
      publish();
    });
  }

  ~LivePanel() { stopRequested = true; }  // what the script is at comes to an end
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
  std::future<void> begin(Worker::Job job) {
    const auto task = std::make_shared<std::packaged_task<void()>>(std::move(job));
    std::future<void> end = task->get_future();
    const bool taken = worker_.post([this, task] {
      (*task)();
      state_.notify();
    });
    return taken ? std::move(end) : std::future<void>();
  }

  void idle() {
    if (!panel_) return;
    if (++cycles_ % kCyclesPerFileCheck == 0) panel_->followFiles();
    publish();
  }

  void publish() {
    panel_->cycle();
    state_.publish(panel_->view());
  }

  PageState& state_;
  std::optional<panel::Panel> panel_;  ///< used by the worker only, and once that has ended
  unsigned cycles_ = 0;
  Worker worker_;
};

/// The browser that is being opened, if it is.
class Browser {
 public:
  void open(const std::string& address) {
    child_ = panel::startProcess({"xdg-open", address}, -1);
    if (child_ < 0) std::fprintf(stderr, "cusdesk: no xdg-open here: open the address yourself\n");
  }

  /// Collects the process that opens it, once that has ended.
  void reap() {
    if (child_ > 0 && waitpid(child_, nullptr, WNOHANG) != 0) child_ = -1;
  }

 private:
  pid_t child_ = -1;
};

}  // namespace

int servePanel(const panel::PanelSetup& setup, int port, bool open) {
  endOnSignals();
  PageState state(setup.facts);
  panel::Console console([&](panel::OutputSource source, const std::string& line) {
    state.addLine(source, line);
    if (source == panel::OutputSource::Error || setup.verbose) echo(source, line);
  });
  std::unique_ptr<LivePanel> live;
  const PanelActions actions = {
      [&](tagPOINT point) {
        return live->act([point](panel::Panel& panel) { panel.click(point); });
      },
      [&](panel::Turn turn) {
        return live->act([turn](panel::Panel& panel) { panel.turn(turn); });
      },
  };
  PageServer server(state, actions, port);
  live = std::make_unique<LivePanel>(setup, console, state);
  server.start();
  console.answer(server.address() + "\n");
  Browser browser;
  if (open) browser.open(server.address());
  while (!stopRequested) {
    std::this_thread::sleep_for(milliseconds(50));
    browser.reap();
  }
  return kExitOk;
}

}  // namespace desk::server
