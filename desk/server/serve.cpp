#include "desk/server/serve.h"

#include <signal.h>
#include <sys/wait.h>

#include <cstdio>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

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
constexpr milliseconds kBetweenLooks{100};  ///< at the files of jobs

std::atomic<bool> stopRequested{false};  ///< set by a signal
static_assert(std::atomic<bool>::is_always_lock_free);

void endOnSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { stopRequested = true; };
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

/// Begins something on a worker. @return the answer's future; not valid when too much waits
std::future<HttpAnswer> begin(Worker& worker, PageState& state, std::function<HttpAnswer()> job) {
  const auto task = std::make_shared<std::packaged_task<HttpAnswer()>>(std::move(job));
  std::future<HttpAnswer> answer = task->get_future();
  const bool isTaken = worker.post([task, &state] {
    (*task)();
    state.notify();
  });
  return isTaken ? std::move(answer) : std::future<HttpAnswer>();
}

/// A panel on a thread of its own, which publishes what it shows.
class LivePanel {
 public:
  LivePanel(const panel::PanelSetup& setup, panel::Console& console, PageState& state)
      : state_(state), worker_([this] { idle(); }, kCycle) {
    const auto create = [&] {
      panel_.emplace(setup.plugin, setup.facts, console, stopRequested);
      return HttpAnswer{};
    };
    begin(worker_, state_, create).get();
    act([](panel::Panel& panel) { panel.start(); });
  }

  ~LivePanel() { stopRequested = true; }  // what the script is at comes to an end
  LivePanel(const LivePanel&) = delete;
  LivePanel& operator=(const LivePanel&) = delete;

  /// Begins something with the panel.
  template <class Action>
  std::future<HttpAnswer> act(Action action) {
    return begin(worker_, state_, [this, action] {
      action(*panel_);
      publish();
      return HttpAnswer{204, {}, {}};
    });
  }

 private:
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

/// The jobs on a thread of their own: a script that does not end keeps nobody from them.
class LiveJobs {
 public:
  LiveJobs(const std::vector<std::string>& files, PageState& state)
      : state_(state),
        jobs_(files, [&](const std::vector<JobFacts>& jobs) { state.setJobs(jobs); }),
        worker_([this] { jobs_.follow(); }, kBetweenLooks) {}

  std::future<HttpAnswer> ask(JobQuestion question) {
    return begin(worker_, state_,
                 [this, question = std::move(question)] { return jobs_.answer(question); });
  }

  std::future<HttpAnswer> drop(DroppedJob job) {
    const auto dropped = std::make_shared<DroppedJob>(std::move(job));
    return begin(worker_, state_, [this, dropped] { return jobs_.add(std::move(*dropped)); });
  }

 private:
  PageState& state_;
  Jobs jobs_;  ///< used by the worker only
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

int serve(const PageSetup& setup) {
  endOnSignals();
  PageState state(setup.panel.facts);
  panel::Console console([&](panel::OutputSource source, const std::string& line) {
    state.addLine(source, line);
    if (source == panel::OutputSource::Error || setup.panel.verbose) echo(source, line);
  });
  std::unique_ptr<LivePanel> panel;
  std::unique_ptr<LiveJobs> jobs;
  const PageActions actions = {
      [&](tagPOINT point) { return panel->act([=](panel::Panel& at) { at.click(point); }); },
      [&](panel::Turn turn) { return panel->act([=](panel::Panel& at) { at.turn(turn); }); },
      [&](JobQuestion question) { return jobs->ask(std::move(question)); },
      [&](DroppedJob job) { return jobs->drop(std::move(job)); },
  };
  PageServer server(state, actions, setup.port);
  panel = std::make_unique<LivePanel>(setup.panel, console, state);
  jobs = std::make_unique<LiveJobs>(setup.jobs, state);
  server.start();
  const std::string address = server.address() + "#" + setup.view;
  console.answer(address + "\n");
  Browser browser;
  if (setup.opens) browser.open(address);
  while (!stopRequested) {
    std::this_thread::sleep_for(milliseconds(50));
    browser.reap();
  }
  return kExitOk;
}

}  // namespace desk::server
