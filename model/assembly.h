// How the readers put a job together from the records under construction.
#pragma once

#include <iterator>
#include <utility>
#include <vector>

namespace model {

/// Moves all elements into a vector without spare capacity; the source keeps its buffer if it had
/// any.
template <class Element>
std::vector<Element> takeExact(std::vector<Element>& source) {
  if (source.size() == source.capacity()) return std::exchange(source, {});
  std::vector<Element> taken(std::make_move_iterator(source.begin()),
                             std::make_move_iterator(source.end()));
  source.clear();
  return taken;
}

/// Appends a copy of the record under construction to `list`. Its children are moved into the copy
/// and so left empty; every other field stays as it is for the next element.
template <class Record, class Holder, class Child>
void appendFinished(std::vector<Record>& list, Record& current,
                    std::vector<Child> Holder::*children) {
  std::vector<Child> finished = takeExact(current.*children);
  list.push_back(current);
  list.back().*children = std::move(finished);
}

/// Runs `read` and passes its result on. If it throws, empties `unfinished` on the way out, so that
/// what a broken read began cannot turn up in the next job.
template <class Sequence, class Read>
int dropOnThrow(Sequence& unfinished, Read&& read) {
  try {
    return read();
  } catch (...) {
    unfinished.clear();
    throw;
  }
}

}  // namespace model
