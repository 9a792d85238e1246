# The instruction sets the vector paths are built for, and the one rule that
# builds a source for one of them.
#
# Each flag set matches what the run-time detection calls that level
# (math/zeInstructionSet.cpp): a unit built for a level runs only where the
# detected level is at least that one. -O3 lets the short loops over lanes
# unroll into registers (a Debug build leaves them unoptimised like the rest).
# Nothing here may add a fused multiply-add or a
# fast-math flag: every lane follows the scalar order of operations.
set(ze_isa_opt "$<$<NOT:$<CONFIG:Debug>>:-O3>")
set(ZEMATH_ISA_FLAGS_sse2 ${ze_isa_opt})
set(ZEMATH_ISA_FLAGS_avx2 ${ze_isa_opt} -mavx2)
set(ZEMATH_ISA_FLAGS_avx512 ${ze_isa_opt} -mavx512f -mavx512vl -mavx512bw -mavx512dq)

# For the tests only, never for an installed library: the AVX-512 unit is
# built for AVX2 with its intrinsics emulated (tests/support/EmulatedAvx512.h,
# SIMDe), and the detection reports AVX-512 wherever AVX2 runs, so that the
# path suites compare the AVX-512 loops with the scalar loop on a processor
# without AVX-512.
if(ZEMATH_EMULATE_AVX512)
  find_path(ZEMATH_SIMDE_INCLUDE simde/x86/avx512.h REQUIRED)
  set(ZEMATH_ISA_FLAGS_avx512 -O2 -mavx2 -include ${PROJECT_SOURCE_DIR}/tests/support/EmulatedAvx512.h)
  if(NOT ZEMATH_SIMDE_INCLUDE STREQUAL "/usr/include")
    list(APPEND ZEMATH_ISA_FLAGS_avx512 -isystem ${ZEMATH_SIMDE_INCLUDE})
  endif()
endif()

# zemath_isa_sources(<target> <level> <files...>): adds the files to the
# target (in the calling directory), built with the flags of <level>: sse2,
# avx2 or avx512.
function(zemath_isa_sources target level)
  if(NOT DEFINED ZEMATH_ISA_FLAGS_${level})
    message(FATAL_ERROR "zemath_isa_sources: unknown instruction set '${level}' (sse2, avx2, avx512)")
  endif()
  target_sources(${target} PRIVATE ${ARGN})
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS "${ZEMATH_ISA_FLAGS_${level}}")
endfunction()
