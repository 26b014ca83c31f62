#pragma once

// Stand-in for the system's file copier.

#include <cstdint>

extern "C" {

typedef struct _copyfile_state* copyfile_state_t;
typedef std::uint32_t copyfile_flags_t;
typedef int (*copyfile_callback_t)(int what, int stage, copyfile_state_t state, const char* from, const char* to,
                                   void* context);

copyfile_state_t copyfile_state_alloc(void);
int copyfile_state_free(copyfile_state_t state);
int copyfile_state_get(copyfile_state_t state, std::uint32_t what, void* value);
int copyfile_state_set(copyfile_state_t state, std::uint32_t what, const void* value);
int fcopyfile(int from, int to, copyfile_state_t state, copyfile_flags_t flags);

} // extern "C"

#define COPYFILE_DATA (1 << 3)

#define COPYFILE_STATE_STATUS_CB 6
#define COPYFILE_STATE_STATUS_CTX 7
#define COPYFILE_STATE_COPIED 8

#define COPYFILE_COPY_DATA 4

#define COPYFILE_START 1
#define COPYFILE_FINISH 2
#define COPYFILE_ERR 3
#define COPYFILE_PROGRESS 4

#define COPYFILE_CONTINUE 0
#define COPYFILE_SKIP 1
#define COPYFILE_QUIT 2
