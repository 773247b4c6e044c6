// Lets a plug-in built with today's compiler load beside a controller's older C++ runtime.
//
// The standard containers of GCC 12 call a helper that came into the shared runtime only with
// GLIBCXX_3.4.29. The plug-in brings its own, hidden from everybody else by the version script.
#include <new>
#include <vector>  // declares the helper

#if defined(_GLIBCXX_RELEASE) && _GLIBCXX_RELEASE >= 12
namespace std {  // NOLINT(cert-dcl58-cpp): there is no other place for it
void __throw_bad_array_new_length() {
  throw bad_array_new_length();
}
}  // namespace std
#endif
