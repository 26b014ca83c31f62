// Options of the thread sanitizer for programs with a window. The system's libraries of Qt are not instrumented: it
// does not see their locks, and takes what their threads pass to each other for races. Memory that our own code touches
// is watched as usual.
extern "C" const char* __tsan_default_options() // NOLINT(bugprone-reserved-identifier): the sanitizer's name
{
    return "ignore_noninstrumented_modules=1";
}
