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

# The program folder: a complete install of the Windows program (and, for tests and
# the demo, the simulated engine) that `make run` and the end-to-end tests start from.
set(QV_STAGE_DIR ${CMAKE_BINARY_DIR}/stage CACHE INTERNAL "")

# The debug information of the staged programs: what ships is stripped, and each
# program names its file here by its debug link (docs/installer.md).
set(QV_SYMBOLS_DIR ${CMAKE_BINARY_DIR}/symbols CACHE INTERNAL "")

# qv_stage(target [SUBDIR dir]): copy the built target into the program folder
# after every build of it. In the Windows tree the copy is stripped: its debug
# information goes to symbols/<name>.debug, which the copy's debug link names.
function(qv_stage target)
  cmake_parse_arguments(S "" "SUBDIR" "" ${ARGN})
  set(dest ${QV_STAGE_DIR})
  if(S_SUBDIR)
    set(dest ${dest}/${S_SUBDIR})
  endif()
  if(WIN32 AND CMAKE_OBJCOPY)
    set(debug ${QV_SYMBOLS_DIR}/$<TARGET_FILE_NAME:${target}>.debug)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E make_directory ${dest} ${QV_SYMBOLS_DIR}
      COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> ${debug}
      COMMAND ${CMAKE_OBJCOPY} --strip-all --add-gnu-debuglink=${debug}
              $<TARGET_FILE:${target}> ${dest}/$<TARGET_FILE_NAME:${target}>
      VERBATIM)
    return()
  endif()
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory ${dest}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:${target}> ${dest}/
    VERBATIM)
endfunction()

# qv_stage_files(SUBDIR dir FILES ...): copy data files (skin, icons) into the
# program folder at configure time and again whenever they change.
function(qv_stage_files)
  cmake_parse_arguments(S "" "SUBDIR" "FILES" ${ARGN})
  set(dest ${QV_STAGE_DIR})
  if(S_SUBDIR)
    set(dest ${dest}/${S_SUBDIR})
  endif()
  foreach(f ${S_FILES})
    get_filename_component(name ${f} NAME)
    configure_file(${f} ${dest}/${name} COPYONLY)
  endforeach()
endfunction()
