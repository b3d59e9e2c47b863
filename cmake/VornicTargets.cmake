include(GoogleTest)

# vornic_library(NAME SOURCES a.cpp b.cpp LIBRARIES other ...): one static library per folder.
function(vornic_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES}
                          PRIVATE vornic_warnings ${ARG_PRIVATE_LIBRARIES})
endfunction()

# vornic_test(NAME SOURCES ... LIBRARIES ... [LIVE] [THREADS] [ENVIRONMENT VARIABLE=value]): one test
# program per folder, every test of it known to ctest by name. LIVE tests need a sound server and a
# display, which ./dev test gives them (tests/support/private-desktop); they run alone, since they
# share both. THREADS marks tests of what threads share, for ThreadSanitizer. The tests run with
# ENVIRONMENT's variable.
function(vornic_test name)
    cmake_parse_arguments(ARG "LIVE;THREADS" "ENVIRONMENT" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} vornic_warnings GTest::gmock GTest::gtest_main)
    set(properties LABELS unit TIMEOUT 120)
    if(NOT TARGET vornic_unit_tests)
        add_custom_target(vornic_unit_tests)
    endif()
    if(NOT ARG_LIVE)
        add_dependencies(vornic_unit_tests ${name})
    endif()
    if(ARG_THREADS)
        # One label that both selections match: a list does not get through the discovery.
        set(properties LABELS unit-threads TIMEOUT 120)
        if(NOT TARGET vornic_threads_tests)
            add_custom_target(vornic_threads_tests)
        endif()
        add_dependencies(vornic_threads_tests ${name})
    elseif(ARG_LIVE)
        set(properties LABELS live TIMEOUT 120 RUN_SERIAL ON)
    endif()
    if(ARG_ENVIRONMENT)
        list(APPEND properties ENVIRONMENT "${ARG_ENVIRONMENT}")
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES ${properties})
endfunction()
