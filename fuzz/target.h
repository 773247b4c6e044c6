// What a fuzz target offers to the two programs made from it: the fuzzer, which invents inputs, and
// the replay, which runs the kept ones in every build.
//
// The readers, the Lua state and the part of a target live as long as its process: what one input
// leaves behind is there for the next one. A target aborts the process on a finding.
#pragma once

#include <cstddef>
#include <cstdint>

/// Prepares the process. Called once, before the first input.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

/// Runs one input. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzzing {

/// Into how many places of a job the target plants its inputs. The first byte of an input chooses
/// the place, the rest is planted. 0: the target takes inputs as they are. At most 256.
std::size_t slotCount();

}  // namespace fuzzing
