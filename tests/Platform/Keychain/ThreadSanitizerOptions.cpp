// Read by the thread sanitizer, if this program is built with it. GLib implements its locks without the functions that
// the sanitizer intercepts, so everything that passes between GLib's threads looks like a race.

extern "C" const char* __tsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier): the sanitizer's name

extern "C" const char* __tsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "called_from_lib:libglib-2.0.so\n"
           "called_from_lib:libgobject-2.0.so\n"
           "called_from_lib:libgio-2.0.so\n"
           "called_from_lib:libsecret-1.so\n"
           "called_from_lib:libgcrypt.so\n"; // whose memory libsecret guards with GLib's locks
}
