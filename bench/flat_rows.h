// The floor under the queries: the rows of a job as flat arrays, and the fastest way to make Lua
// tables of them with the functions that the plug-in may call.
#pragma once

#include <lua.hpp>
#include <string>
#include <vector>

#include "model/job_records.h"

namespace bench {

/// The rows of one kind: `keys.size()` values each, one after the other. The texts lie in one
/// block, those of a piece once per piece and those of a bar once per bar, as in the job itself.
class FlatRows {
 public:
  struct Value {
    const char* text = nullptr;  ///< null: a number
    double number = 0;
  };

  explicit FlatRows(std::vector<const char*> keys) : keys_(std::move(keys)) {}
  FlatRows(const FlatRows&) = delete;
  FlatRows& operator=(const FlatRows&) = delete;

  std::size_t count() const { return values_.size() / keys_.size(); }

  /// Pushes the table of all rows.
  void push(lua_State* L) const;

 protected:
  /// Reserves the block of texts, which must not move once a row points into it.
  void reserve(std::size_t bytes) { texts_.reserve(bytes); }
  const char* keep(const std::string& text);
  void add(std::initializer_list<Value> row) { values_.insert(values_.end(), row); }

 private:
  std::vector<const char*> keys_;
  std::vector<Value> values_;
  std::vector<char> texts_;
};

/// What get_work("") answers with.
struct FlatWorks : FlatRows {
  explicit FlatWorks(const DATA_T& job);
};

/// What get_cut("") answers with, for a JSON job without equal piece numbers on a bar.
struct FlatCuts : FlatRows {
  explicit FlatCuts(const DATA_T& job);
};

/// What get_print() answers with.
struct FlatLabels : FlatRows {
  explicit FlatLabels(const DATA_T& job);
};

}  // namespace bench
