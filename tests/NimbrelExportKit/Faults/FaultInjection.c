#define _GNU_SOURCE
#include "tests/NimbrelExportKit/Faults/FaultInjection.h"

#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <sqlite3.h>
#include <stdarg.h>
#include <stddef.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/types.h>

enum { maximumCalls = 100000 };

static __thread int armed, calls, target, errorCode, depth;
static __thread const char* onlyFunction;
static const char* names[maximumCalls];
static char inSQLite[maximumCalls];

void faultsArm(int failAt, int code, const char* only)
{
    calls = 0;
    target = failAt;
    errorCode = code;
    onlyFunction = only;
    armed = 1;
}

int faultsDisarm(void)
{
    armed = 0;
    return calls;
}

const char* faultsName(int call)
{
    return names[call];
}
int faultsWasInSQLite(int call)
{
    return inSQLite[call];
}

static int fails(const char* name)
{
    if (!armed || calls >= maximumCalls) return 0;
    if (onlyFunction != NULL && strcmp(name, onlyFunction) != 0) return 0;
    names[calls] = name;
    inSQLite[calls] = depth > 0;
    if (calls++ != target) return 0;
    errno = errorCode;
    return 1;
}

static void* nextOf(const char* name)
{
    return dlsym(RTLD_NEXT, name);
}

/* A call to the system. */
#define SYSTEM(type, name, failure, parameters, arguments)                                                             \
    type name parameters                                                                                               \
    {                                                                                                                  \
        static type(*next) parameters;                                                                                 \
        if (fails(#name)) return failure;                                                                              \
        if (next == NULL) *(void**)&next = nextOf(#name);                                                              \
        return next arguments;                                                                                         \
    }

#define OPENING(name)                                                                                                  \
    int name(const char* path, int flags, ...)                                                                         \
    {                                                                                                                  \
        static int (*next)(const char*, int, ...);                                                                     \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const mode_t mode = va_arg(rest, mode_t);                                                                      \
        va_end(rest);                                                                                                  \
        if (fails(#name)) return -1;                                                                                   \
        if (next == NULL) *(void**)&next = nextOf(#name);                                                              \
        return next(path, flags, mode);                                                                                \
    }

OPENING(open)
OPENING(open64)
SYSTEM(ssize_t, read, -1, (int file, void* to, size_t size), (file, to, size))
SYSTEM(ssize_t, pread, -1, (int file, void* to, size_t size, off_t at), (file, to, size, at))
SYSTEM(ssize_t, pread64, -1, (int file, void* to, size_t size, off64_t at), (file, to, size, at))
SYSTEM(ssize_t, write, -1, (int file, const void* from, size_t size), (file, from, size))
SYSTEM(ssize_t, pwrite64, -1, (int file, const void* from, size_t size, off64_t at), (file, from, size, at))
SYSTEM(ssize_t, copy_file_range, -1, (int from, off64_t* fromAt, int to, off64_t* toAt, size_t size, unsigned flags),
       (from, fromAt, to, toAt, size, flags))
SYSTEM(int, linkat, -1, (int from, const char* path, int to, const char* name, int flags),
       (from, path, to, name, flags))
SYSTEM(int, rename, -1, (const char* from, const char* to), (from, to))
SYSTEM(int, unlink, -1, (const char* path), (path))
SYSTEM(int, unlinkat, -1, (int folder, const char* path, int flags), (folder, path, flags))
SYSTEM(int, mkdir, -1, (const char* path, mode_t mode), (path, mode))
SYSTEM(int, stat, -1, (const char* restrict path, struct stat* restrict facts), (path, facts))
SYSTEM(int, fstat, -1, (int file, struct stat* facts), (file, facts))
SYSTEM(int, stat64, -1, (const char* restrict path, struct stat64* restrict facts), (path, facts))
SYSTEM(int, fstat64, -1, (int file, struct stat64* facts), (file, facts))
SYSTEM(int, ftruncate64, -1, (int file, off64_t size), (file, size))
SYSTEM(int, fchmod, -1, (int file, mode_t mode), (file, mode))
SYSTEM(DIR*, fdopendir, NULL, (int file), (file))

/* A close that fails still closes the file, as on Linux. */
int close(int file)
{
    static int (*next)(int);
    if (next == NULL) *(void**)&next = nextOf("close");
    const int failed = fails("close");
    const int result = next(file);
    if (!failed) return result;
    errno = errorCode;
    return -1;
}

int ioctl(int file, unsigned long request, ...)
{
    static int (*next)(int, unsigned long, ...);
    va_list rest;
    va_start(rest, request);
    void* argument = va_arg(rest, void*);
    va_end(rest);
    if (fails("ioctl")) return -1;
    if (next == NULL) *(void**)&next = nextOf("ioctl");
    return next(file, request, argument);
}

/* A call to SQLite's interface; calls to the system within it are SQLite's own. */
#define SQLITE(name, parameters, arguments)                                                                            \
    int name parameters                                                                                                \
    {                                                                                                                  \
        static int(*next) parameters;                                                                                  \
        if (fails(#name)) return SQLITE_FULL;                                                                          \
        if (next == NULL) *(void**)&next = nextOf(#name);                                                              \
        ++depth;                                                                                                       \
        const int result = next arguments;                                                                             \
        --depth;                                                                                                       \
        return result;                                                                                                 \
    }

SQLITE(sqlite3_open_v2, (const char* path, sqlite3** handle, int flags, const char* vfs), (path, handle, flags, vfs))
SQLITE(sqlite3_exec,
       (sqlite3 * handle, const char* sql, int (*onRow)(void*, int, char**, char**), void* context, char** text),
       (handle, sql, onRow, context, text))
SQLITE(sqlite3_prepare_v2, (sqlite3 * handle, const char* sql, int size, sqlite3_stmt** statement, const char** rest),
       (handle, sql, size, statement, rest))
SQLITE(sqlite3_bind_int64, (sqlite3_stmt * statement, int index, sqlite3_int64 value), (statement, index, value))
SQLITE(sqlite3_step, (sqlite3_stmt * statement), (statement))

/* Closing cannot fail for its caller, but it calls the system. */
int sqlite3_close_v2(sqlite3* handle)
{
    static int (*next)(sqlite3*);
    if (next == NULL) *(void**)&next = nextOf("sqlite3_close_v2");
    ++depth;
    const int result = next(handle);
    --depth;
    return result;
}
