// What the sanitizers are to pass over in every program of theirs: other people's libraries, which are not built with
// them.

// Names that the sanitizers' runtimes call; they are theirs.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions();

// Fontconfig keeps what it has read for the life of the process, by pointers that the leak check doesn't see.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

// The software Vulkan device's threads, and the compiler that it makes its programs with, synchronise by means that the
// check doesn't see: they are called uninstrumented. The validation layer takes locks of its own in orders of its own.
extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libvulkan_lvp.so\n"
           "race:libvulkan_lvp.so\n"
           "race:libLLVM-15.so\n"
           "race:libVkLayer_khronos_validation.so\n"
           "deadlock:libvulkan_lvp.so\n"
           "deadlock:libVkLayer_khronos_validation.so\n"
           "mutex:libvulkan_lvp.so\n"
           "race:libfontconfig.so\n"
           "race:libglib-2.0.so\n"
           "race:libgobject-2.0.so\n"
           "race:libgio-2.0.so\n"
           "race:libharfbuzz.so\n"
           "race:libpango-1.0.so\n"
           "race:libpangoft2-1.0.so\n"
           "race:librsvg-2.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)
