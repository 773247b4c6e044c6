// A query is whole: from its first row to its last it answers from the job as it was when it began.
//
// Lua may run a finaliser whenever it allocates, in the middle of a query too, and that may call
// any script command. A query reads bars where they are, without a copy; so a command that reads
// another job first has the bars set aside that a running query may still read, and they are freed
// when that query is done.
//
// Where the host's Lua is built as C, an error leaves a query by a jump that runs no destructor, so
// that a query may be marked as running and be gone. Calls of one thread are nested and the host
// makes those of several one after another. A query is therefore known to be gone when a call
// - comes from another thread,
// - lies as high in the stack as the query did, or higher, or
// - finds the query's mark in the stack written over.
// That call forgets the query and frees what was set aside for it.
#pragma once

#include "model/job_records.h"

struct lua_State;

namespace running_queries {

/// Makes the rows of a command whose argument was read; null where it has none.
using Query = int (*)(lua_State* L, const char* argument);

/// Runs a query. While it runs, the bars of either reader's job stay in memory.
/// @return what the query returns; what it throws passes through
int run(lua_State* L, const char* argument, Query query);

/// To be called before something is read into `job`. When a running query reads its bars, they are
/// set aside where they are in memory, and `job` goes on with a copy. Throws std::bad_alloc, and
/// has changed nothing then.
void setAside(DATA_T& job);

}  // namespace running_queries
