#include "desk/repl/value_text.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

#include "desk/base/display_width.h"
#include "desk/base/utf8.h"
#include "desk/repl/lua_words.h"

namespace desk::repl {

namespace {

/// A text as Lua source has it, but with all characters that can be seen as they are.
std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t size = utf8CharacterSize(text, at);
    const char byte = text[at];
    if (byte == '"' || byte == '\\') {
      out += std::string("\\") + byte;
    } else if (byte == '\n') {
      out += "\\n";
    } else if (size == 0 || static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F) {
      char escape[8] = "";
      std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned char>(byte));
      out += escape;
    } else {
      out += text.substr(at, size);
    }
    at += std::max<std::size_t>(size, 1);
  }
  return out + "\"";
}

/// A key outside the sequence, with what it takes to sort it.
struct Key {
  enum class Kind { Number, Text, Other } kind;
  lua_Number number;
  std::string text;  ///< as shown in front of "="
  int reference;     ///< of the key in a table of keys
};

bool comesBefore(const Key& a, const Key& b) {
  if (a.kind != b.kind) return a.kind < b.kind;
  if (a.kind == Key::Kind::Number) return a.number < b.number;
  return a.text < b.text;
}

class Writer {
 public:
  Writer(lua_State* L, const Limits& limits) : L_(L), limits_(limits) {}

  /// The value at the absolute `index`, in a place that has `indent` columns in front of it.
  std::string write(int index, std::size_t indent) {
    ++values_;
    if (lua_type(L_, index) == LUA_TSTRING) return text(index);
    if (lua_type(L_, index) != LUA_TTABLE || hasOwnText(index)) return plain(index);
    const void* table = lua_topointer(L_, index);
    const auto found = std::find(open_.rbegin(), open_.rend(), table);
    if (found != open_.rend())
      return "<cycle: " + std::to_string(found - open_.rbegin() + 1) + " up>";
    if (open_.size() == limits_.depth || values_ > limits_.values) return "{…}";
    open_.push_back(table);
    std::vector<std::string> entries = entriesOf(index, indent + kIndent);
    open_.pop_back();
    return joined(entries, indent);
  }

 private:
  static constexpr std::size_t kIndent = 2;

  bool hasOwnText(int index) {
    if (luaL_getmetafield(L_, index, "__tostring") == LUA_TNIL) return false;
    lua_pop(L_, 1);
    return true;
  }

  std::string plain(int index) {
    std::size_t size = 0;
    const char* bytes = luaL_tolstring(L_, index, &size);
    std::string text(bytes, size);
    lua_pop(L_, 1);
    return text;
  }

  std::string text(int index) {
    std::size_t size = 0;
    const char* bytes = lua_tolstring(L_, index, &size);
    std::string all = quoted({bytes, std::min(size, 4 * limits_.textColumns)});
    if (size <= 4 * limits_.textColumns && displayWidth(all) <= limits_.textColumns) return all;
    return fitted(all + " ", limits_.textColumns) + "\" (" + std::to_string(size) + " bytes)";
  }

  /// In one line where that fits; else short entries next to one another, others line by line.
  std::string joined(const std::vector<std::string>& entries, std::size_t indent) const {
    std::string line = "{";
    for (const std::string& entry : entries) line += (line.size() > 1 ? ", " : "") + entry;
    line += "}";
    const bool isShort = line.find('\n') == std::string::npos;
    if (isShort && displayWidth(line) + indent <= limits_.columns) return line;
    std::string lines = "{";
    std::size_t column = limits_.columns;
    for (const std::string& entry : entries) {
      const std::size_t width = displayWidth(entry) + 2;
      if (!isShort || column + width > limits_.columns) {
        lines += "\n" + std::string(indent + kIndent, ' ');
        column = indent + kIndent;
      } else {
        lines += " ";
      }
      lines += entry + ",";
      column += width;
    }
    return lines + "\n" + std::string(indent, ' ') + "}";
  }

  std::vector<std::string> entriesOf(int table, std::size_t indent) {
    luaL_checkstack(L_, 8, "table nested too deep");
    std::vector<std::string> entries;
    std::size_t left = 0;
    const auto length = static_cast<std::size_t>(lua_rawlen(L_, table));
    for (std::size_t i = 1; i <= length; ++i) {
      if (isFull(entries)) {
        left += length - i + 1;
        break;
      }
      lua_rawgeti(L_, table, static_cast<lua_Integer>(i));
      entries.push_back(write(lua_gettop(L_), indent));
      lua_pop(L_, 1);
    }
    addOthers(table, length, indent, entries, left);
    if (left > 0) entries.push_back("… " + std::to_string(left) + " more");
    return entries;
  }

  bool isFull(const std::vector<std::string>& entries) const {
    return entries.size() >= limits_.entries || values_ > limits_.values;
  }

  void addOthers(int table, std::size_t length, std::size_t indent,
                 std::vector<std::string>& entries, std::size_t& left) {
    lua_newtable(L_);
    const int kept = lua_gettop(L_);
    std::vector<Key> keys = keysOf(table, length, kept);
    std::sort(keys.begin(), keys.end(), comesBefore);
    for (const Key& key : keys) {
      if (isFull(entries)) {
        ++left;
        continue;
      }
      lua_rawgeti(L_, kept, key.reference);
      lua_rawget(L_, table);
      const std::string before = key.text + " = ";
      entries.push_back(before + write(lua_gettop(L_), indent));
      lua_pop(L_, 1);
    }
    lua_pop(L_, 1);
  }

  std::vector<Key> keysOf(int table, std::size_t length, int kept) {
    std::vector<Key> keys;
    for (lua_pushnil(L_); lua_next(L_, table) != 0; lua_pop(L_, 1)) {
      const int index = lua_gettop(L_) - 1;
      const bool inSequence = lua_isinteger(L_, index) && lua_tointeger(L_, index) >= 1 &&
                              static_cast<std::size_t>(lua_tointeger(L_, index)) <= length;
      if (inSequence) continue;
      keys.push_back(keyAt(index));
      keys.back().reference = static_cast<int>(keys.size());
      lua_pushvalue(L_, index);
      lua_rawseti(L_, kept, keys.back().reference);
    }
    return keys;
  }

  Key keyAt(int index) {
    if (lua_type(L_, index) == LUA_TNUMBER) {
      return {Key::Kind::Number, lua_tonumber(L_, index), "[" + plain(index) + "]", 0};
    }
    if (lua_type(L_, index) != LUA_TSTRING)
      return {Key::Kind::Other, 0, "[" + plain(index) + "]", 0};
    std::size_t size = 0;
    const char* bytes = lua_tolstring(L_, index, &size);
    const std::string name(bytes, size);
    return {Key::Kind::Text, 0, isName(name) ? name : "[" + text(index) + "]", 0};
  }

  lua_State* L_;
  const Limits& limits_;
  std::vector<const void*> open_;  ///< the tables around the value at hand
  std::size_t values_ = 0;
};

}  // namespace

std::string valueText(lua_State* L, int index, const Limits& limits) {
  index = lua_absindex(L, index);
  if (lua_type(L, index) != LUA_TSTRING) return Writer(L, limits).write(index, 0);
  std::size_t size = 0;
  const char* bytes = lua_tolstring(L, index, &size);
  return {bytes, size};
}

}  // namespace desk::repl
