// What a panel runtime finds in libCustom_LuaParseModule.so: the names for `dlsym`, with the
// signatures behind them. This header and host/part_types.h are all that a host includes for it;
// C++11 and the C++ runtime's present string and list (_GLIBCXX_USE_CXX11_ABI=1) are enough.
//
// From load to unload:
//
//   1. dlopen. The process must offer what the plug-in leaves open: see the other headers here.
//   2. kRegLuaLib, once for each Lua state; scripts then have the module `cus_ParseModule`.
//   3. kSetFunPoint fills the host's tagPARTCALLBACKS; create(), then init() with a tagPARTINFO.
//   4. kSetCell, kDrawHeadText, kUpdate, kSetBodyText, in this order: grid, head, range, rows.
//      After kPageUp, kPageDown or another number of rows: kUpdate and kSetBodyText again.
//   5. plcRead() from time to time; when it answers true, fillPartShowAttr() gives the picture.
//   6. destroy() for every part, lua_close for every state, `callbacks = tagPARTCALLBACKS()`, and
//      only then dlclose: a structure that still holds the plug-in's functions calls into code
//      that is gone when it is destroyed or assigned.
#pragma once

#include <dlfcn.h>

#include <list>
#include <string>
#include <vector>

#include "host/part_types.h"

struct lua_State;

namespace cus_plugin {

/// A function of the plug-in. A part's member is called as a function that takes the part first:
/// so the C++ ABIs of x86-64, arm64 and armhf have it.
template <class Signature>
struct Function {
  const char* name;

  /// Its address in the library that `dlopen` answered with; null when that has none.
  Signature* in(void* library) const { return reinterpret_cast<Signature*>(dlsym(library, name)); }
};

/// The texts of some rows, from the top. The caller owns list and rows.
using Rows = std::list<std::vector<std::string>*>;

// --- names fixed by the plug-in ------------------------------------------------------------------

/// Registers the script module with a state. Answers 1 always; a null state is ignored.
constexpr Function<int(lua_State* L)> kRegLuaLib{"Custom_RegLuaLib"};

/// Fills all six slots. Answers 1 always; a failure to install ends the process.
constexpr Function<int(tagPARTCALLBACKS* callbacks)> kSetFunPoint{"Custom_SetFunPoint"};

// The members of a table part. `part` is the handle that create() answered with. It points to a
// CLuaParseModulePart: whoever wants its fields, such as nOrder, includes part/table_part.h of the
// same release and casts the handle. Results are 1 for done and 0 for not done.

/// Rows of a page, columns, and their widths as one digit each, "2:1:1"; empty: equal widths.
/// 0 for null, any other text, or another number of digits than `cols`.
constexpr Function<int(void* part, unsigned short rows, unsigned short cols, const char* widths)>
    kSetCell{"_ZN19CLuaParseModulePart7SetCellEttPKc"};

/// The texts of the head, from the left. They are copied.
constexpr Function<void(void* part, const std::vector<std::string>& titles)> kDrawHeadText{
    "_ZN18CSVGLuaParseModule12DrawHeadTextERKSt6vectorINSt7__cxx1112basic_stringIcSt11char_"
    "traitsIcESaIcEEESaIS6_EE"};

/// Tells how many rows there are in all, and learns which of them the current page shows: from
/// `first` to `last`, counted from 1. 0, and both untouched, when there is no row or no grid.
constexpr Function<int(void* part, unsigned short total, int& first, int& last)> kUpdate{
    "_ZN19CLuaParseModulePart6UpdateEtRiS0_"};

/// Shows these rows: those that kUpdate asked for. They are copied; in descending order (nOrder 1)
/// the list comes back reversed. Answers as kRefresh: the rows are taken either way.
constexpr Function<int(void* part, Rows& rows)> kSetBodyText{
    "_ZN19CLuaParseModulePart11SetBodyTextERNSt7__cxx114listIPSt6vectorINS0_12basic_stringIcSt11"
    "char_traitsIcESaIcEEESaIS7_EESaISA_EEE"};

/// Asks for a new picture. 0 when the last request was granted less than 100 ms ago: ask again.
constexpr Function<int(void* part)> kRefresh{"_ZN19CLuaParseModulePart7RefreshEv"};

/// One page back, one page on. 0 on the first page, on the last page.
constexpr Function<int(void* part)> kPageUp{"_ZN19CLuaParseModulePart6PageUpEv"};
constexpr Function<int(void* part)> kPageDown{"_ZN19CLuaParseModulePart8PageDownEv"};

/// The current page, counted from 1, and the number of pages.
constexpr Function<void(void* part, unsigned short& current, unsigned short& count)> kGetPage{
    "_ZN19CLuaParseModulePart7GetPageERtS0_"};

/// The selected row's number among all rows, counted from 1. 0 when none is selected. 1 with
/// `index` untouched for a selection below the last row: set it to 0 before.
constexpr Function<int(void* part, int& index)> kGetIndex{"_ZN19CLuaParseModulePart8GetIndexERi"};

/// Back to an empty table without a grid. The rectangle stays.
constexpr Function<int(void* part)> kReset{"_ZN19CLuaParseModulePart5ResetEv"};

}  // namespace cus_plugin
