# Install rules: headers, both shared libraries, a CMake package
# (find_package(ZEMath CONFIG) gives ZEMath::ZEMath and ZEMath::LuxCore) and a
# pkg-config file.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# The version header is written by hand; refuse to build when it and the
# project's version drift apart.
file(STRINGS ${PROJECT_SOURCE_DIR}/math/zeMathVersion.h ze_version_line
  REGEX "^#define ZEMATH_VERSION_STRING ")
string(REGEX REPLACE ".*\"(.*)\".*" "\\1" ze_header_version "${ze_version_line}")
if(NOT ze_header_version STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "math/zeMathVersion.h says ${ze_header_version}, the project says ${PROJECT_VERSION}")
endif()

# Users compile the headers, which need C++17.
target_compile_features(LuxCore INTERFACE cxx_std_17)

install(TARGETS LuxCore ZEMath EXPORT ZEMathTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# Public headers keep their core/... and math/... paths; the impl folders come
# along because the public headers include them. The instruction-set units,
# lanes, loops and raw path declarations and the portable functions' internals
# (portable/detail) serve only the library's own sources.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/core ${PROJECT_SOURCE_DIR}/math
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" PATTERN "*.inl"
  PATTERN "BayCoreRegistry.h" EXCLUDE
  PATTERN "lanes" EXCLUDE
  PATTERN "isa" EXCLUDE
  PATTERN "*Loop.h" EXCLUDE
  PATTERN "*RawPaths.h" EXCLUDE
  PATTERN "detail" EXCLUDE)
install(FILES ${PROJECT_BINARY_DIR}/include/math/zeMathConfig.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/math)

set(ze_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZEMath)
install(EXPORT ZEMathTargets NAMESPACE ZEMath:: DESTINATION ${ze_cmake_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZEMathConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZEMathConfig.cmake INSTALL_DESTINATION ${ze_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZEMathConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZEMathConfig.cmake ${PROJECT_BINARY_DIR}/ZEMathConfigVersion.cmake
  DESTINATION ${ze_cmake_dir})

# The pkg-config file finds the prefix from its own place, so it stays right
# when the prefix is chosen at install time (cmake --install --prefix).
set(ze_pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ze_pc_to_prefix /${ze_pc_dir} /)
string(REGEX REPLACE "/$" "" ze_pc_to_prefix "${ze_pc_to_prefix}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/zemath.pc.in ${PROJECT_BINARY_DIR}/zemath.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zemath.pc DESTINATION ${ze_pc_dir})
