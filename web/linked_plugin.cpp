// The plug-in where it is part of the program: found by the names that it exports elsewhere.
#include <cstring>
#include <type_traits>

#include "desk/base/errors.h"
#include "desk/script/plugin.h"
#include "module/part_callbacks.h"
#include "module/registration.h"
#include "part/table_part.h"

namespace desk::script {

namespace {

using namespace cus_plugin;

struct Exported {
  const char* name;
  void* address;
};

template <class Signature>
Exported exported(const Function<Signature>& function, std::common_type_t<Signature*> address) {
  return {function.name, reinterpret_cast<void*>(address)};
}

CLuaParseModulePart& partAt(void* part) {
  return *static_cast<CLuaParseModulePart*>(part);
}

/// Members are called through functions: here an address is good for its own signature only.
const Exported kExported[] = {
    exported(kRegLuaLib, Custom_RegLuaLib),
    exported(kSetFunPoint, Custom_SetFunPoint),
    exported(
        kSetCell, +[](void* part, unsigned short rows, unsigned short cols,
                      const char* widths) { return partAt(part).SetCell(rows, cols, widths); }),
    exported(
        kDrawHeadText,
        +[](void* part, const std::vector<std::string>& titles) {
          partAt(part).DrawHeadText(titles);
        }),
    exported(
        kUpdate, +[](void* part, unsigned short total, int& first,
                     int& last) { return partAt(part).Update(total, first, last); }),
    exported(
        kSetBodyText, +[](void* part, Rows& rows) { return partAt(part).SetBodyText(rows); }),
    exported(
        kRefresh, +[](void* part) { return partAt(part).Refresh(); }),
    exported(
        kPageUp, +[](void* part) { return partAt(part).PageUp(); }),
    exported(
        kPageDown, +[](void* part) { return partAt(part).PageDown(); }),
    exported(
        kGetPage, +[](void* part, unsigned short& current,
                      unsigned short& count) { partAt(part).GetPage(current, count); }),
    exported(
        kGetIndex, +[](void* part, int& index) { return partAt(part).GetIndex(index); }),
    exported(
        kReset, +[](void* part) { return partAt(part).Reset(); }),
};

}  // namespace

Plugin::Plugin(const std::string& path) : path_(path), handle_(nullptr) {}

Plugin::~Plugin() {
  handle_ = nullptr;  // nothing was opened
}

void* Plugin::symbol(const char* name) const {
  for (const Exported& row : kExported) {
    if (std::strcmp(row.name, name) == 0) return row.address;
  }
  throw Error(kExitIoError, std::string("the plug-in has no ") + name);
}

void Plugin::registerModule(lua_State* L) const {
  find(kRegLuaLib)(L);
}

}  // namespace desk::script
