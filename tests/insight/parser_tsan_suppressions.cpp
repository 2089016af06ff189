// Under ThreadSanitizer, this executable reads the suppressions of tests/tsan.supp
// without any environment set up, so the stress test runs the same through ctest.
// Without the sanitizer the function is never called.

extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __tsan_default_suppressions() {
    // Keep in step with tests/tsan.supp.
    return "race:QString::operator=\n";
}
