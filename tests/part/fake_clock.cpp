#include "tests/part/fake_clock.h"

#include "host/utility.h"

namespace {
unsigned long long shownTick = 0;
}

void setTick(unsigned long long tick) {
  shownTick = tick;
}

UTILITY::CTime* UTILITY::CTime::get_instance() {
  static CTime clock;
  return &clock;
}

unsigned long long UTILITY::CTime::getTickCount() {
  return shownTick;
}
