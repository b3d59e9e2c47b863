include(GoogleTest)

# Half of the compiler's time went into reading the standard library and the test library once a
# file: they are read once for all. A file still includes what it uses, which `./dev lint` needs.
add_library(vornic_precompiled_std OBJECT "${CMAKE_SOURCE_DIR}/cmake/empty.cpp")
target_precompile_headers(vornic_precompiled_std PRIVATE
    <algorithm> <array> <atomic> <chrono> <cmath> <cstdint> <filesystem> <functional> <limits> <map>
    <memory> <numbers> <optional> <set> <span> <string> <string_view> <utility> <variant> <vector>)
target_link_libraries(vornic_precompiled_std PRIVATE vornic_warnings vornic_hardening)

# vornic_precompiled(TARGET HEADERS): HEADERS is std or test. A precompiled header only fits what is
# compiled with the same options, so targets with options of their own do without.
function(vornic_precompiled target headers)
    target_precompile_headers(${target} REUSE_FROM vornic_precompiled_${headers})
endfunction()

# vornic_library(NAME SOURCES a.cpp b.cpp LIBRARIES other ...): one static library per folder.
function(vornic_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES}
                          PRIVATE vornic_warnings vornic_hardening ${ARG_PRIVATE_LIBRARIES})
    vornic_precompiled(${name} std)
endfunction()

# Tests are compiled as they are, since compiling them optimised takes longer than running them plain
# does. One kind of position independence for all, with a toolkit or without: they share what is
# precompiled.
set(VORNIC_TEST_OPTIONS -fPIC $<$<CONFIG:RelWithDebInfo>:-O0>)

# vornic_test(NAME SOURCES ... LIBRARIES ... [LIVE] [THREADS] [ENVIRONMENT VARIABLE=value]): one test
# program per folder, every test of it known to ctest by name. LIVE tests need a sound server and a
# display, which ./dev test gives them (tests/support/private-desktop); they run alone, since they
# share both. THREADS marks tests of what threads share, for ThreadSanitizer. The tests run with
# ENVIRONMENT's variable.
function(vornic_test name)
    cmake_parse_arguments(ARG "LIVE;THREADS" "ENVIRONMENT" "SOURCES;LIBRARIES" ${ARGN})
    if(NOT TARGET vornic_precompiled_test)
        add_library(vornic_precompiled_test OBJECT "${CMAKE_SOURCE_DIR}/cmake/empty.cpp")
        target_precompile_headers(vornic_precompiled_test PRIVATE
            <gmock/gmock.h> <gtest/gtest.h> <algorithm> <array> <atomic> <chrono> <cmath>
            <filesystem> <functional> <map> <memory> <numbers> <optional> <set> <span> <string>
            <string_view> <utility> <vector>)
        target_compile_options(vornic_precompiled_test PRIVATE ${VORNIC_TEST_OPTIONS})
        set_target_properties(vornic_precompiled_test PROPERTIES POSITION_INDEPENDENT_CODE OFF)
        target_link_libraries(vornic_precompiled_test PRIVATE vornic_warnings GTest::gmock)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${VORNIC_TEST_OPTIONS})
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    vornic_precompiled(${name} test)
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
