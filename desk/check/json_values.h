// JSON values: the members of an object, and how messages name a value.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/key_table.h"

namespace desk::check {

/// The members of an object, sorted into what the key tables of its level name and what not. Points
/// into the object, which must outlive it.
class JsonMembers {
 public:
  using Stranger = std::pair<std::string_view, const Json::Value*>;

  /// Passes over the members once; none where `object` is no object.
  void sort(const Json::Value& object, model::Level level);

  /// The member under the first or the second spelling of a row, also when it is null; null when
  /// there is none. The rows of a level count through its tables: those of a piece are followed by
  /// its label fields.
  const Json::Value* first(std::size_t row) const { return known_[2 * row]; }
  const Json::Value* second(std::size_t row) const { return known_[2 * row + 1]; }

  /// The members that no reader knows, in the order of the object.
  const std::vector<Stranger>& strangers() const { return strangers_; }

 private:
  std::vector<const Json::Value*> known_;
  std::vector<Stranger> strangers_;
};

/// The member of that name, also when it is null; null when there is none, no name, or no object.
const Json::Value* member(const Json::Value& object, const char* name);

/// Whether the value is a text with a zero byte in it.
bool holdsZeroByte(const Json::Value& value);

/// "a text", "an integer", ...
const char* wordFor(model::KeyKind kind);

/// "the text \"7\"", "the number 3.5", "null", "an array", ...
std::string describe(const Json::Value& value);

}  // namespace desk::check
