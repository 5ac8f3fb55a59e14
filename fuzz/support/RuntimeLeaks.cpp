// Clang's OpenMP runtime keeps memory of its threads to the end, and the leak sanitizer asks here what not to report.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libomp";
}
