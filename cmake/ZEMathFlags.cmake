# Compile flags shared by every target of the project.
#
# Results must follow the written order of floating-point operations bit for
# bit, so contraction into fused multiply-add is off in every build type and
# no fast-math style flag is ever added. The optimisation level is the build
# type's own (CMAKE_BUILD_TYPE, Release when none is given): a Debug build is
# not optimised, and gives the same bits.
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type (Debug, Release, RelWithDebInfo, MinSizeRel)" FORCE)
endif()

add_library(zemath_flags INTERFACE)
target_compile_options(zemath_flags INTERFACE
  -ffp-contract=off
  -Wall -Wextra
  -Wno-invalid-offsetof)

if(ZEMATH_WERROR)
  target_compile_options(zemath_flags INTERFACE -Werror)
endif()

if(ZEMATH_SANITIZE)
  target_compile_options(zemath_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  target_link_options(zemath_flags INTERFACE -fsanitize=address,undefined)
endif()

if(ZEMATH_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "ZEMATH_FUZZ needs clang (configure with CXX=clang++-14)")
  endif()
  target_compile_options(zemath_flags INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  target_link_options(zemath_flags INTERFACE -fsanitize=address,undefined)
endif()
