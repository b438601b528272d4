# The simulated engine against the monitor, the engine control on the real service
# manager, and a start of the monitor by COM (EngineCallbackTest.cpp). Included by
# CMakeLists.txt of this folder.
qv_e2e_test(e2e_engine EngineCallbackTest.cpp)
target_link_libraries(e2e_engine PRIVATE qv_engine qv_platform_win32 ole32 oleaut32 uuid)
add_dependencies(e2e_engine qv_sim_background qv_sim_service)

# The monitor window beside the simulated engine and the web helper's stand-in.
qv_e2e_test(e2e_monitor MonitorWindowTest.cpp)
target_link_libraries(e2e_monitor PRIVATE qv_account qv_frame qv_platform_win32)
add_dependencies(e2e_monitor qv_sim_background qv_sim_service)
if(TARGET qv_web_standin)
  add_dependencies(e2e_monitor qv_web_standin)
endif()

# The notices the tick brings up by itself: the job-end notification, the missed-backup
# notice and the dial-up window.
# One test sets the user's regional formats of the prefix: it takes turns on the desktop,
# and with the tests of programs that write dates.
qv_e2e_test(e2e_notices DESKTOP NoticesTest.cpp)
qv_e2e_regional_formats(e2e_notices NoticesTest.TheNextTransferTimeFollowsTheUsersTimeFormat)
target_link_libraries(e2e_notices PRIVATE qv_base)
add_dependencies(e2e_notices qv_sim_background qv_sim_service)

# Sizes no user means to make: a megabyte file name in a progress call, a megabyte set
# name in a job-end request, 200,000 records in the job list; the window answers throughout.
qv_e2e_test(e2e_hostile_sizes HostileSizesTest.cpp)
target_link_libraries(e2e_hostile_sizes PRIVATE qv_engine qv_platform_win32 ole32 oleaut32 uuid psapi)
add_dependencies(e2e_hostile_sizes qv_sim_background qv_sim_service)
