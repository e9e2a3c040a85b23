// A program with converters of its own beside the library's defines them twice, on purpose.
extern "C" const char* __asan_default_options() { return "detect_odr_violation=0"; }
