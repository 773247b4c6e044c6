// What a script would do without the plug-in: walk the decoded document itself.
#pragma once

struct lua_State;
namespace Json {
class Value;
}

namespace bench {

/// Pushes a function of one barcode that looks through `document`, decoded into Lua tables, and
/// returns the same rows as get_work. The state gets the standard libraries that it needs.
void pushScan(lua_State* L, const Json::Value& document);

}  // namespace bench
