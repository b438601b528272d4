# Helpers shared by every CMakeLists of the project.

# qv_layer(name DEPS ...): src/<name>/*.cpp (and src/<name>/portable|fake for the
# platform layer) become the static library qv_<name>. Headers are included as
# "<name>/File.h" from src/.
function(qv_layer name)
  cmake_parse_arguments(L "" "" "DEPS" ${ARGN})
  set(dir ${PROJECT_SOURCE_DIR}/src/${name})
  file(GLOB srcs CONFIGURE_DEPENDS ${dir}/*.cpp)
  if(name STREQUAL "platform")
    file(GLOB more CONFIGURE_DEPENDS ${dir}/portable/*.cpp ${dir}/fake/*.cpp)
    list(APPEND srcs ${more})
  endif()
  if(NOT srcs)
    add_library(qv_${name} INTERFACE)
    target_include_directories(qv_${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(qv_${name} INTERFACE ${L_DEPS})
    return()
  endif()
  add_library(qv_${name} STATIC ${srcs})
  target_include_directories(qv_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(qv_${name} PUBLIC ${L_DEPS})
endfunction()

# Wine runs the Windows test programs; the test harness sets WINEPREFIX/DISPLAY.
set(QV_TEST_TIMEOUT 300 CACHE STRING "Seconds before a test counts as hung")
