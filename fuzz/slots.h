// The places of a job into which an input is planted: so a text reaches every level and every key
// without the fuzzer having to invent the job around it.
#pragma once

#include <string>
#include <vector>

namespace fuzzing {

struct Slot {
  std::string before, after;
};

/// The places of a JSON job: the whole document; the members of each level; the elements of each
/// array; the value of each key, in both spellings.
const std::vector<Slot>& jsonSlots();

/// The places of an XML job: the whole document; the children of each level; the text of each
/// element.
const std::vector<Slot>& xmlSlots();

}  // namespace fuzzing
