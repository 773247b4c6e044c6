// Which bars and pieces of two jobs are the same.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "desk/job/source_text.h"
#include "model/job_records.h"

namespace desk::diff {

/// A piece and its place.
struct PlacedPiece {
  const BAR_T* bar;
  const PIECE_CHILD_SECOND_T* piece;
  job::Element at;
  bool hasBarCode;  ///< one that no other piece of the job bears
};

std::vector<PlacedPiece> piecesOf(const DATA_T& job);

/// Index pairs of two lists. What has no partner has -1.
struct Matching {
  std::vector<int> toAfter;
  std::vector<int> toBefore;

  Matching(std::size_t before, std::size_t after) : toAfter(before, -1), toBefore(after, -1) {}
  void pair(std::size_t before, std::size_t after) {
    toAfter[before] = static_cast<int>(after);
    toBefore[after] = static_cast<int>(before);
  }
};

/// Pairs what has the same key and no partner yet, equal keys in their order.
/// @param keyOf called as keyOf(element); its result can be hashed
/// @param mayPair called as mayPair(old element, new element)
template <class Element, class KeyOf, class MayPair>
void pairByKey(const std::vector<Element>& before, const std::vector<Element>& after,
               Matching& matching, KeyOf keyOf, MayPair mayPair) {
  std::unordered_map<std::string, std::vector<std::size_t>> waiting;
  for (std::size_t i = after.size(); i-- > 0;) {
    if (matching.toBefore[i] < 0) waiting[keyOf(after[i])].push_back(i);
  }
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (matching.toAfter[i] >= 0) continue;
    const auto found = waiting.find(keyOf(before[i]));
    if (found == waiting.end() || found->second.empty()) continue;
    if (!mayPair(before[i], after[found->second.back()])) continue;
    matching.pair(i, found->second.back());
    found->second.pop_back();
  }
}

Matching matchBars(const DATA_T& before, const DATA_T& after);
Matching matchPieces(const std::vector<PlacedPiece>& before, const std::vector<PlacedPiece>& after);

/// Whether partners come in another order.
bool isReordered(const std::vector<int>& partners);

}  // namespace desk::diff
