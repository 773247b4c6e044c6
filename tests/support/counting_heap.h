// The heap of a test program, counted to the byte and made to fail on demand.
//
// Link counting_heap.cpp into the program: it takes the place of malloc and its kin, so that the
// allocations of every library count, whatever language they are written in. In builds with a
// sanitizer, which needs malloc for itself, it takes the place of operator new only.
#pragma once

#include <cstddef>

namespace counting_heap {

/// What is allocated now, as it was asked for, without the allocator's own share.
struct Live {
  long long bytes = 0;
  long long blocks = 0;
  bool operator==(const Live& other) const {
    return bytes == other.bytes && blocks == other.blocks;
  }
};

Live live();

/// Whether what malloc gives counts too, and not operator new alone.
bool countsMalloc();

/// Lets one allocation of this thread fail, the one after `count` more that succeed; with `all`
/// every one from there on. Other threads go on undisturbed.
void failAfter(unsigned long long count, bool all = false);

/// Ends that. @return whether an allocation did fail
bool stopFailing();

}  // namespace counting_heap
