#pragma once

// Stand-in for the system's log. Apple's macro hands its format to the compiler's own checks in the same way.

typedef struct os_log_s* os_log_t;

extern "C" os_log_t os_log_create(const char* subsystem, const char* category);
extern "C" void os_log_error_stand_in(os_log_t log, const char* format, ...) __attribute__((format(os_log, 2, 3)));

#define os_log_error(log, format, ...) os_log_error_stand_in(log, format, ##__VA_ARGS__)
