// Preloaded into a program: prints on standard error, when the program ends, whether processes of its user may read its
// memory, and how much of it a core file may hold.
#include <cstdio>

#include <sys/prctl.h>
#include <sys/resource.h>

namespace {

struct TellsAtTheEnd {
    ~TellsAtTheEnd()
    {
        rlimit core{};
        getrlimit(RLIMIT_CORE, &core);
        std::fprintf(stderr, "readable: %d, largest core: %lu\n", prctl(PR_GET_DUMPABLE),
                     static_cast<unsigned long>(core.rlim_cur));
    }
};

const TellsAtTheEnd tells;

} // namespace
