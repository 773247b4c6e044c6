#include <chrono>
#include <mutex>

#include "desk/host/settings.h"
#include "host/utility.h"

namespace {

std::mutex fixedMutex;
std::optional<unsigned long long> fixedTicks;

}  // namespace

void deskhost::setTickCount(std::optional<unsigned long long> ticks) {
  const std::lock_guard<std::mutex> lock(fixedMutex);
  fixedTicks = ticks;
}

UTILITY::CTime* UTILITY::CTime::get_instance() {
  static CTime instance;
  return &instance;
}

unsigned long long UTILITY::CTime::getTickCount() {
  using std::chrono::milliseconds;
  {
    const std::lock_guard<std::mutex> lock(fixedMutex);
    if (fixedTicks) return *fixedTicks;
  }
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<unsigned long long>(std::chrono::duration_cast<milliseconds>(now).count());
}
