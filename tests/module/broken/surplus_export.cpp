// A helper that escapes into the host.
extern "C" int spareHelper();
extern "C" int spareHelper() {
  return 1;
}
