# Language level, warnings and sanitizers, the same for every target.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(VORLANT_CCACHE ccache)
if(VORLANT_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${VORLANT_CCACHE}")
endif()

# The presets of ./test make them errors; another compiler may know more of them.
add_library(vorlant_warnings INTERFACE)
target_compile_options(vorlant_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                                  -Woverloaded-virtual -Wimplicit-fallthrough)
target_compile_definitions(vorlant_warnings INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH QT_DEPRECATED_WARNINGS)
link_libraries(vorlant_warnings)

# What Debian builds its programs with, as far as the compiler knows it for this processor. The sanitizers have checks of
# their own, and the checked library functions need an optimized build.
if(NOT VORLANT_SANITIZE AND NOT VORLANT_FUZZ)
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection VORLANT_CF_PROTECTION)
  add_compile_options(-fstack-protector-strong -Wformat -Werror=format-security
                      $<$<BOOL:${VORLANT_CF_PROTECTION}>:-fcf-protection>
                      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
endif()

if(VORLANT_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VORLANT_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "The fuzzers need clang: cmake --preset fuzz")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
