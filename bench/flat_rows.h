// The floor under the queries: the rows of a job as flat arrays, and the fastest way to make Lua
// tables of them with the functions that the plug-in may call.
#pragma once

#include <cstring>
#include <lua.hpp>
#include <string>
#include <vector>

#include "module/script_rows.h"

namespace bench {

/// All rows of one kind: a value for each key, one row after the other. The texts lie in one block,
/// those of a piece once per piece and those of a bar once per bar, as in the job itself.
template <class Row>
class FlatRows {
 public:
  /// @param make  called with a sink that takes the rows
  template <class Make>
  explicit FlatRows(Make make) {
    make(*this);
    for (Value& value : values_) {
      if (value.isText) value.text = texts_.data() + value.offset;
    }
  }
  FlatRows(const FlatRows&) = delete;
  FlatRows& operator=(const FlatRows&) = delete;

  void operator()(const Row& row) {
    std::size_t column = 0;
    script_rows::forEachValue(row, [&](const char*, const row_keys::Value& value) {
      values_.push_back(value.text == nullptr ? Value{nullptr, value.number, 0, false, nullptr}
                                              : textValue(value, column));
      ++column;
    });
  }
  void unknown(const std::string&) {}

  /// Pushes the table of all rows.
  void push(lua_State* L) const {
    lua_createtable(L, 0, 0);
    for (auto value = values_.begin(); value != values_.end();) {
      lua_createtable(L, 0, kColumns);
      for (const auto& key : script_rows::KeysOf<Row>::keys) {
        lua_pushstring(L, key.key);
        if (value->isText) {
          lua_pushstring(L, value->text);
        } else {
          lua_pushnumber(L, value->number);
        }
        lua_settable(L, -3);
        ++value;
      }
      lua_rawseti(L, -2, luaL_len(L, -2) + 1);
    }
  }

 private:
  static constexpr int kColumns = std::size(script_rows::KeysOf<Row>::keys);

  struct Value {
    const char* text;
    double number;
    std::size_t offset;
    bool isText;
    const void* source;
  };

  /// The text of the row before where that shows the same one, else a copy.
  Value textValue(const row_keys::Value& value, std::size_t column) {
    if (values_.size() >= column + kColumns) {
      const Value& before = values_[values_.size() - kColumns];
      const char* const known = texts_.data() + before.offset;
      if (before.source == value.source && std::strcmp(known, value.text) == 0) return before;
    }
    const std::size_t offset = texts_.size();
    texts_.insert(texts_.end(), value.text, value.text + std::strlen(value.text) + 1);
    return {nullptr, 0.0, offset, true, value.source};
  }

  std::vector<Value> values_;
  std::vector<char> texts_;
};

}  // namespace bench
