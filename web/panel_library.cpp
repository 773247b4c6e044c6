// Answers of the C and C++ libraries that scripts and findings show, as the panel's libraries give
// them where those of emscripten give others. The linker sends each call of a function NAME to the
// __wrap_NAME here, and __real_NAME is what it would have called: see CMakeLists.txt.
#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <lua.hpp>
#include <stdexcept>
#include <string>

namespace {

/// An error number of emscripten, and what stands for it on the panel.
struct SystemError {
  int here;
  int number;
  const char* words;
};

/// What can become of a file, a folder or a stream.
constexpr SystemError kSystemErrors[] = {
    {EPERM, 1, "Operation not permitted"},
    {ENOENT, 2, "No such file or directory"},
    {EINTR, 4, "Interrupted system call"},
    {EIO, 5, "Input/output error"},
    {ENXIO, 6, "No such device or address"},
    {EBADF, 9, "Bad file descriptor"},
    {EAGAIN, 11, "Resource temporarily unavailable"},
    {ENOMEM, 12, "Cannot allocate memory"},
    {EACCES, 13, "Permission denied"},
    {EBUSY, 16, "Device or resource busy"},
    {EEXIST, 17, "File exists"},
    {EXDEV, 18, "Invalid cross-device link"},
    {ENODEV, 19, "No such device"},
    {ENOTDIR, 20, "Not a directory"},
    {EISDIR, 21, "Is a directory"},
    {EINVAL, 22, "Invalid argument"},
    {ENFILE, 23, "Too many open files in system"},
    {EMFILE, 24, "Too many open files"},
    {ENOTTY, 25, "Inappropriate ioctl for device"},
    {EFBIG, 27, "File too large"},
    {ENOSPC, 28, "No space left on device"},
    {ESPIPE, 29, "Illegal seek"},
    {EROFS, 30, "Read-only file system"},
    {EMLINK, 31, "Too many links"},
    {EPIPE, 32, "Broken pipe"},
    {ENAMETOOLONG, 36, "File name too long"},
    {ENOSYS, 38, "Function not implemented"},
    {ENOTEMPTY, 39, "Directory not empty"},
    {ELOOP, 40, "Too many levels of symbolic links"},
};

const SystemError* systemErrorOf(int here) {
  for (const SystemError& row : kSystemErrors) {
    if (row.here == here) return &row;
  }
  return nullptr;
}

/// Whether digits were lost that the panel's library misses: those of a number too small to keep
/// them all, in base 10.
bool hasUnderflowed(double number, const char* begin, const char* end) {
  return std::fpclassify(number) == FP_SUBNORMAL &&
         std::none_of(begin, end, [](char c) { return c == 'x' || c == 'X'; });
}

/// Does what it is given; a failure then only bears the name of the function.
template <class Convert>
auto named(const char* function, Convert convert) try {
  return convert();
} catch (const std::invalid_argument&) {
  throw std::invalid_argument(function);
} catch (const std::out_of_range&) {
  throw std::out_of_range(function);
}

}  // namespace

extern "C" {

char* __real_strerror(int error);
char* __wrap_strerror(int error) {
  const SystemError* const found = systemErrorOf(error);
  return found == nullptr ? __real_strerror(error) : const_cast<char*>(found->words);
}

/// What io and os answer: after a failure nil, a message and the system's number.
int __real_luaL_fileresult(lua_State* L, int done, const char* file);
int __wrap_luaL_fileresult(lua_State* L, int done, const char* file) {
  const int results = __real_luaL_fileresult(L, done, file);
  const auto here = static_cast<int>(lua_tointeger(L, -1));
  if (const SystemError* const found = done ? nullptr : systemErrorOf(here)) {
    lua_pop(L, 1);
    lua_pushinteger(L, found->number);
  }
  return results;
}

double __real_strtod(const char* text, char** end);
double __wrap_strtod(const char* text, char** end) {
  char* stop = nullptr;
  const double number = __real_strtod(text, &stop);
  if (hasUnderflowed(number, text, stop)) errno = ERANGE;
  if (end != nullptr) *end = stop;
  return number;
}

/// What streams call: the panel's read a number that is too small as the nearest there is.
double __real_strtod_l(const char* text, char** end, locale_t locale);
double __wrap_strtod_l(const char* text, char** end, locale_t locale) {
  const int before = errno;
  const double number = __real_strtod_l(text, end, locale);
  if (errno == ERANGE && std::fabs(number) < 1.0) errno = before;
  return number;
}

// Functions of C++, by the names that the compiler gives them.
#define STOI(prefix) \
  prefix##_ZNSt3__24stoiERKNS_12basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEEEPmi
#define STOD(prefix) \
  prefix##_ZNSt3__24stodERKNS_12basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEEEPm
#define SUBSTRING(prefix) \
  prefix##_ZNSt3__212basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEEC1ERKS5_mmRKS4_

int STOI(__real_)(const std::string& text, std::size_t* end, int base);
int STOI(__wrap_)(const std::string& text, std::size_t* end, int base) {
  return named("stoi", [&] { return STOI(__real_)(text, end, base); });
}

double STOD(__real_)(const std::string& text, std::size_t* end);
double STOD(__wrap_)(const std::string& text, std::size_t* end) {
  return named("stod", [&] { return STOD(__real_)(text, end); });
}

/// The constructor behind substr.
void* SUBSTRING(__real_)(void* made, const std::string& text, std::size_t at, std::size_t size,
                         const std::allocator<char>& memory);
void* SUBSTRING(__wrap_)(void* made, const std::string& text, std::size_t at, std::size_t size,
                         const std::allocator<char>& memory) {
  if (at > text.size()) {
    throw std::out_of_range("basic_string::substr: __pos (which is " + std::to_string(at) +
                            ") > this->size() (which is " + std::to_string(text.size()) + ")");
  }
  return SUBSTRING(__real_)(made, text, at, size, memory);
}

}  // extern "C"
