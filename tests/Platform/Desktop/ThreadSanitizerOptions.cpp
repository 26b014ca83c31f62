// Read by the thread sanitizer, if this program is built with it. GLib implements its locks without the functions that
// the sanitizer intercepts, so everything that passes between GLib's threads looks like a race. Also, a test restores
// the environment once it has seen the effect of a program that a thread started in that environment: the sanitizer
// cannot see that this orders the two.

extern "C" const char* __tsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier): the sanitizer's name

extern "C" const char* __tsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "called_from_lib:libglib-2.0.so\n"
           "called_from_lib:libgobject-2.0.so\n"
           "called_from_lib:libgio-2.0.so\n"
           "race:posix_spawnp\n";
}
