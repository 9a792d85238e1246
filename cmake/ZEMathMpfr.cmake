# MPFR (libmpfr-dev), the exact reference of the trigonometric accuracy
# measurements: a test and tool dependency only, never of the library. Gives
# the interface target zemath_mpfr when it is found.
find_path(ZEMATH_MPFR_INCLUDE_DIR mpfr.h)
find_library(ZEMATH_MPFR_LIBRARY mpfr)
find_library(ZEMATH_GMP_LIBRARY gmp)
if(ZEMATH_MPFR_INCLUDE_DIR AND ZEMATH_MPFR_LIBRARY AND ZEMATH_GMP_LIBRARY AND NOT TARGET zemath_mpfr)
  add_library(zemath_mpfr INTERFACE)
  target_include_directories(zemath_mpfr SYSTEM INTERFACE ${ZEMATH_MPFR_INCLUDE_DIR})
  target_link_libraries(zemath_mpfr INTERFACE ${ZEMATH_MPFR_LIBRARY} ${ZEMATH_GMP_LIBRARY})
endif()
