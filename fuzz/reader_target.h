// What the targets of the two readers share: plant an input, read the job, ask everything, twice.
#pragma once

#include <string>
#include <vector>

#include "fuzz/query_checks.h"
#include "fuzz/slots.h"
#include "fuzz/surroundings.h"

namespace fuzzing {

/// Writes the input, planted where its first byte tells, as the job file `name`.
inline void plant(const std::vector<Slot>& slots, const std::uint8_t* data, std::size_t size,
                  const std::string& name) {
  const Slot& slot = slots[size == 0 ? 0 : data[0] % slots.size()];
  const std::string text(reinterpret_cast<const char*>(data) + (size == 0 ? 0 : 1),
                         size == 0 ? 0 : size - 1);
  files().write(name, slot.before + text + slot.after);
}

/// Reads the job three times with `reader`, which holds whatever came before, and asks everything
/// each time. The first pass may carry values over from earlier jobs; after it the reader holds
/// all that this job can leave behind, so the second and the third must not differ.
template <class Reader, class Load>
void readAndAsk(Reader& reader, unsigned allowed, Load&& load) {
  std::string answers[3];
  for (std::string& answer : answers) {
    answer = outcomeOf(allowed, [&] { return "code " + std::to_string(load(reader)) + "\n"; });
    require(reader.curBar.piece.empty() && reader.curPiece.work.empty(),
            "a piece or a work is left over for the next job");
    answer += textOf(reader.data) + askAll(reader);
  }
  require(answers[1] == answers[2], "two passes over the same job differ");
}

}  // namespace fuzzing
