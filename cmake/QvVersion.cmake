# The product's version, set here and nowhere else: QVMonitor.exe and the simulated
# engine's programs carry it in their version resources, and the About window reads
# it back from them. The design's programs keep the third number at 0 and count the
# revision in the fourth.
set(QV_VERSION_MAJOR 9)
set(QV_VERSION_MINOR 5)
set(QV_VERSION_BUILD 0)
set(QV_VERSION_REVISION 5)
set(QV_VERSION ${QV_VERSION_MAJOR}.${QV_VERSION_MINOR}.${QV_VERSION_BUILD}.${QV_VERSION_REVISION})

# qv_version_resource(target ORIGINAL name DESCRIPTION text): a version resource of
# the product's version for one Windows program.
function(qv_version_resource target)
  cmake_parse_arguments(V "" "ORIGINAL;DESCRIPTION" "" ${ARGN})
  set(QV_ORIGINAL_NAME ${V_ORIGINAL})
  set(QV_FILE_DESCRIPTION ${V_DESCRIPTION})
  set(out ${CMAKE_CURRENT_BINARY_DIR}/version/${target}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/QvVersion.rc.in ${out} @ONLY)
  target_sources(${target} PRIVATE ${out})
endfunction()
