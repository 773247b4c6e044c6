// The C library of a controller that is too old.
extern "C" char* getenv(const char*);
extern "C" char* getenv(const char*) {
  return nullptr;
}
