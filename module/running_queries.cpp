#include "module/running_queries.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <list>
#include <utility>
#include <vector>

namespace running_queries {
namespace {

using Ticket = std::uintptr_t;

/// What a query leaves in its stack frame: its ticket, over and over. It is wider than the part of
/// a jump buffer that the C library leaves as it was, so that frames that come to lie here later
/// write over some of it.
struct Mark {
  Ticket copies[32];
};

struct Entry {
  const int* thread;  ///< every thread has an errno of its own
  const Mark* mark;
  Ticket ticket;  ///< counted up from query to query
};

/// Bars that queries go on reading after their job has been replaced.
struct Kept {
  const DATA_T* job;
  Ticket first, last;  ///< the queries that began while these were the bars of the job
  std::vector<BAR_T> bars;

  bool isReadBy(const Entry& query) const { return first <= query.ticket && query.ticket <= last; }
};

std::vector<Entry> entries;  ///< outermost first
std::list<Kept> kept;
Ticket lastTicket = 0;

/// Whether a query runs, seen from a call whose frame holds `here`. The frame of one that does not
/// may belong to others by now, which is nothing that a sanitizer should stumble over.
__attribute__((no_sanitize("address"))) bool runs(const Entry& query, const void* here) {
  if (query.thread != &errno || !std::greater<const void*>()(query.mark, here)) return false;
  const volatile Ticket* const copies = query.mark->copies;
  for (std::size_t i = 0; i < std::size(query.mark->copies); ++i) {
    if (copies[i] != query.ticket) return false;
  }
  return true;
}

/// Frees what no running query reads.
__attribute__((cold)) void freeOld() {
  kept.remove_if([](const Kept& old) {
    return std::none_of(entries.begin(), entries.end(),
                        [&](const Entry& query) { return old.isReadBy(query); });
  });
}

/// Forgets the queries that do not run.
void forgetOthers(const void* here) {
  std::size_t running = 0;
  for (const Entry& query : entries) {
    if (runs(query, here)) entries[running++] = query;
  }
  entries.resize(running);
  if (!kept.empty()) freeOld();
}

/// A query for as long as it runs.
class Running {
 public:
  Running() {
    forgetOthers(this);
    std::fill(std::begin(mark_.copies), std::end(mark_.copies), ++lastTicket);
    entries.push_back({&errno, &mark_, lastTicket});
  }
  ~Running() { forgetOthers(this); }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Mark mark_;
};

}  // namespace

int run(lua_State* L, const char* argument, Query query) {
  const Running running;
  return query(L, argument);
}

__attribute__((cold)) void setAside(DATA_T& job) {
  forgetOthers(__builtin_frame_address(0));
  const auto first = std::find_if(entries.begin(), entries.end(), [&](const Entry& query) {
    return std::none_of(kept.begin(), kept.end(),
                        [&](const Kept& old) { return old.job == &job && old.isReadBy(query); });
  });
  if (first == entries.end()) return;
  std::vector<BAR_T> copy = job.Bar;
  kept.push_back({&job, first->ticket, lastTicket, {}});
  kept.back().bars = std::exchange(job.Bar, std::move(copy));
}

}  // namespace running_queries
