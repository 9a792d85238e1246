# The demo's model code: loading with Assimp, packing the influences,
# sampling the animation, the skeleton and its palettes, the skinning stage.
# The demo, its test and the model benchmark share it. Defines zeDemoModel
# when Assimp (libassimp-dev, a dependency of the demo only) is there.
if(NOT TARGET zeDemoModel)
  find_package(assimp CONFIG QUIET)
  if(TARGET assimp::assimp)
    # Seen from every folder that links the model code.
    set_target_properties(assimp::assimp PROPERTIES IMPORTED_GLOBAL TRUE)
    add_library(zeDemoModel STATIC
      ${CMAKE_CURRENT_LIST_DIR}/DemoModel.cpp
      ${CMAKE_CURRENT_LIST_DIR}/DemoInfluences.cpp
      ${CMAKE_CURRENT_LIST_DIR}/DemoAnimation.cpp
      ${CMAKE_CURRENT_LIST_DIR}/DemoSkeleton.cpp
      ${CMAKE_CURRENT_LIST_DIR}/DemoSkinning.cpp)
    target_include_directories(zeDemoModel PUBLIC ${CMAKE_CURRENT_LIST_DIR}/..)
    target_link_libraries(zeDemoModel PUBLIC ZEMath assimp::assimp PRIVATE zemath_flags)
    # Where Debian's assimp-testmodels puts the characters the test and the benchmark play.
    set(ZEMATH_DEMO_MODELS "/usr/share/assimp/models" CACHE PATH "Folder of the packaged Assimp test models")
    target_compile_definitions(zeDemoModel PUBLIC ZE_DEMO_MODELS="${ZEMATH_DEMO_MODELS}")
  else()
    message(STATUS "Assimp not found (libassimp-dev): the demo's model run and the model benchmark are skipped")
  endif()
endif()
