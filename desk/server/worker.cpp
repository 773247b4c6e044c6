#include "desk/server/worker.h"

#include <exception>
#include <utility>

#include "desk/base/output.h"

namespace desk::server {

namespace {

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
  std::unique_lock<std::mutex> lock(mutex_);
  while (!stopping_) {
    Job job = idle_;
    if (wake_.wait_for(lock, period_, [this] { return stopping_ || !jobs_.empty(); })) {
      if (stopping_) break;
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
    lock.lock();
  }
}

}  // namespace desk::server
