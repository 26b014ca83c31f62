// Options of the thread sanitizer for programs with a window. The system's Qt libraries are not instrumented: the
// sanitizer does not see their locks, and takes what their threads pass to each other for races. Our own code's memory
// accesses are checked as usual.
extern "C" const char* __tsan_default_options() // NOLINT(bugprone-reserved-identifier): the sanitizer's name
{
    return "ignore_noninstrumented_modules=1";
}
