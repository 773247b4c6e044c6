// What a parsed JSON document no longer tells: where its keys stand, and which of them it lost.
//
// The library gives every value its offset in the text, but not its key's, and of equal keys it
// keeps the last one only. Keys are found by walking over the text that the library has accepted;
// nothing is parsed a second time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace desk::job {

/// A key whose value the document lost to a later equal one of the same object.
struct LostKey {
  std::string key;
  std::size_t offset;       ///< of the lost one
  std::size_t laterOffset;  ///< of the one that took its place
};

/// Something that the panel's library takes and standard JSON does not have.
struct Leniency {
  const char* what;    ///< for a message: "a comment", ...
  std::size_t offset;  ///< of the first one
  std::size_t count;
};

class JsonPositions {
 public:
  /// @param text  a text that the library has parsed
  /// @param start offset of the document, past a byte order mark; the library counts from here
  JsonPositions(std::string_view text, std::size_t start);

  /// Where the key of the value at this offset of the library's stands in the text; the value's own
  /// place for a value without a key.
  std::size_t keyOf(std::ptrdiff_t valueOffset) const;

  /// Where the value at this offset of the library's stands in the text.
  std::size_t placeOf(std::ptrdiff_t valueOffset) const;

  /// The keys lost by the object at this offset of the library's, in the order of the text.
  const std::vector<LostKey>& lostKeysOf(std::ptrdiff_t objectOffset) const;

  const std::vector<Leniency>& leniencies() const { return leniencies_; }

 private:
  friend class KeyWalk;

  /// Offsets of a value and of its key.
  struct KeyedValue {
    std::size_t value;
    std::size_t key;
  };

  std::size_t start_;
  std::vector<KeyedValue> keyedValues_;  ///< in the order of the text
  std::unordered_map<std::size_t, std::vector<LostKey>> lostKeys_;
  std::vector<Leniency> leniencies_;
};

}  // namespace desk::job
