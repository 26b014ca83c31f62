// What the thread sanitizer is told before a program with a window starts. The libraries of Qt that a system brings are
// not built for it: it does not see their locks, and takes what their threads hand to each other for races. Memory that
// our own code touches is watched as ever.
extern "C" const char* __tsan_default_options() // NOLINT(bugprone-reserved-identifier): the sanitizer's name
{
    return "ignore_noninstrumented_modules=1";
}
