// Preloaded into a program: what it writes to the system's log goes to the file CAUGHT_LOG instead, one line each.
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

void keep(const char* format, va_list values)
{
    const char* const path = std::getenv("CAUGHT_LOG");
    std::FILE* const file = path == nullptr ? nullptr : std::fopen(path, "ae");
    if (file == nullptr) return;
    std::vfprintf(file, format, values);
    std::fputc('\n', file);
    std::fclose(file);
}

} // namespace

extern "C" void vsyslog(int /*priority*/, const char* format, va_list values)
{
    keep(format, values);
}

extern "C" void syslog(int /*priority*/, const char* format, ...)
{
    va_list values;
    va_start(values, format);
    keep(format, values);
    va_end(values);
}

// Called instead of those above by code that is compiled with FORTIFY.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" void __vsyslog_chk(int /*priority*/, int /*flag*/, const char* format, va_list values)
{
    keep(format, values);
}

extern "C" void __syslog_chk(int /*priority*/, int /*flag*/, const char* format, ...)
{
    va_list values;
    va_start(values, format);
    keep(format, values);
    va_end(values);
}
// NOLINTEND(bugprone-reserved-identifier)
