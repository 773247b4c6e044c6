// One thread that runs everything which touches the plug-in or a script.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace desk::server {

/// Runs jobs one after the other, in the order in which they came, and between them `idle`, once in
/// each `period`. Jobs that wait when the worker is destroyed are dropped.
class Worker {
 public:
  using Job = std::function<void()>;

  Worker(Job idle, std::chrono::milliseconds period);
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// Takes a job. @return false when too many jobs wait
  bool post(Job job);

 private:
  void work();

  const Job idle_;
  const std::chrono::milliseconds period_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Job> jobs_;
  bool stopping_ = false;
  std::thread thread_;
};

}  // namespace desk::server
