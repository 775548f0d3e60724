// Only in builds with a leak sanitizer, which asks for these functions by their names.

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
const char* __lsan_default_suppressions();
const char* __lsan_default_options();

/// fontconfig loses sight of some of what it has read.
const char* __lsan_default_suppressions() {
  return "leak:libfontconfig";
}

const char* __lsan_default_options() {
  return "print_suppressions=0";
}
// NOLINTEND(bugprone-reserved-identifier)
}
