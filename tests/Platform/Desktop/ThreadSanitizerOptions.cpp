// Read by the thread sanitizer, where this program is built with it. GLib's locks are not made of the functions that it
// watches, so everything that passes between GLib's threads looks like a race. And a test changes the environment back
// when it has seen what a program did that a thread had started with it: the sanitizer cannot see that order.

extern "C" const char* __tsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier): the sanitizer's name

extern "C" const char* __tsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "called_from_lib:libglib-2.0.so\n"
           "called_from_lib:libgobject-2.0.so\n"
           "called_from_lib:libgio-2.0.so\n"
           "race:posix_spawnp\n";
}
