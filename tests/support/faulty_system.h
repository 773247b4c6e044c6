// System calls of a test program that fail, or end the process, on demand.
//
// Link faulty_system.cpp into the program: it stands before the C library's functions. Only calls
// of the thread that armed it are counted.
#pragma once

namespace faulty_system {

enum class Call { Open, Read, Write, Fsync, Close, Rename, Any };

/// What happens at one call.
struct Fault {
  Call call = Call::Any;
  int after = 0;      ///< how many such calls go well before
  int error = 0;      ///< the call fails with this error number; 0 with `kill`
  bool kill = false;  ///< the process dies right before the call
  int most = 0;       ///< if not 0, reads and writes take at most this many bytes
};

void arm(const Fault& fault);

/// @return whether the fault came about
bool disarm();

}  // namespace faulty_system
