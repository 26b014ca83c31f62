/* Makes one call to the system or to SQLite fail. The program's own definitions stand before those of the shared
   libraries, so calls from SQLite and from the C++ library are counted and failed as well as ours. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Counts this thread's calls from now on and fails number `failAt`, counted from 0, with `code` as errno; -1 fails
   none. Calls to SQLite's interface fail with SQLITE_FULL. `only` names the one function to count; null counts all. */
void faultsArm(int failAt, int code, const char* only);

/* Stops counting and returns how many calls there were. */
int faultsDisarm(void);

/* The name of the function whose call number `call` was, and whether it came from within SQLite. */
const char* faultsName(int call);
int faultsWasInSQLite(int call);

#ifdef __cplusplus
}
#endif
