// Read by ThreadSanitizer when a program starts; a function without a caller in every other build.

/// GLib synchronises with its own futexes and isn't built with the sanitizer, which therefore takes what passes between
/// its threads for races.
extern "C" const char* __tsan_default_suppressions() {
    return "race:libglib-2.0.so\n"
           "race:libgobject-2.0.so\n"
           "race:libgio-2.0.so\n";
}
