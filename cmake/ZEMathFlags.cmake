# Compile flags shared by every target of the project.
#
# Results must follow the written order of floating-point operations bit for
# bit, so contraction into fused multiply-add is off and no fast-math style
# flag is ever added.
add_library(zemath_flags INTERFACE)
target_compile_options(zemath_flags INTERFACE
  -O2
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
