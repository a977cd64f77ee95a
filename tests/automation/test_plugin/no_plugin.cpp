// A library that can be loaded and has no entry.
extern "C" __attribute__((visibility("default"))) int lampTestLibrary() {
  return 1;
}
