#include "desk/server/worker.h"

#include <exception>
#include <utility>

#include "desk/base/output.h"

namespace desk::server {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostWaiting = 32;

}  // namespace

Worker::Worker(Job idle, std::chrono::milliseconds period)
    : idle_(std::move(idle)), period_(period), thread_([this] { work(); }) {}

Worker::~Worker() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
    jobs_.clear();
  }
  wake_.notify_one();
  thread_.join();
}

bool Worker::post(Job job) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (stopping_ || jobs_.size() >= kMostWaiting) return false;
    jobs_.push_back(std::move(job));
  }
  wake_.notify_one();
  return true;
}

void Worker::work() {
  auto next = Clock::now() + period_;  // the time for `idle`
  std::unique_lock<std::mutex> lock(mutex_);
  while (!stopping_) {
    Job job = idle_;
    wake_.wait_until(lock, next, [this] { return stopping_ || !jobs_.empty(); });
    if (stopping_) break;
    const bool isIdle = jobs_.empty() || Clock::now() >= next;
    if (!isIdle) {
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    lock.unlock();
    try {
      job();
    } catch (const std::exception& error) {
      log(error.what());
    }
    job = {};
    if (isIdle) next = Clock::now() + period_;
    lock.lock();
  }
}

}  // namespace desk::server
