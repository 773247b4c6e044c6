# Flags for every target of this project.
# STB_GNU_UNIQUE symbols would keep the plug-in loaded for ever: dlclose could not destroy its readers.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fno-gnu-unique)
endif()
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-psabi)
if(CUS_WERROR)
  add_compile_options(-Werror)
endif()

# Only what needs no newer runtime than the controllers have. WebAssembly has a stack of its own kind.
if(NOT EMSCRIPTEN)
  add_compile_options(-fstack-protector-strong)
  add_link_options(-Wl,-z,relro,-z,now)
endif()

if(CUS_SANITIZE)
  # -g1: the stack of a finding needs lines, and no more
  add_compile_options(-fsanitize=${CUS_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1)
  add_link_options(-fsanitize=${CUS_SANITIZE})
endif()

if(CUS_COVERAGE)
  # Updated atomically: programs that fork count as well.
  add_compile_options(--coverage -O0 -fno-inline -g0 -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

# Everything that a fuzzer is to find its way through reports which branches it takes.
if(CUS_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,float-cast-overflow)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
