include(GoogleTest)

# vornic_library(NAME SOURCES a.cpp b.cpp LIBRARIES other ...): one static library per folder.
function(vornic_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES}
                          PRIVATE vornic_warnings ${ARG_PRIVATE_LIBRARIES})
endfunction()

# vornic_test(NAME SOURCES ... LIBRARIES ... [LABELS ...]): one test program per folder, every
# test of it known to ctest by name.
function(vornic_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} vornic_warnings GTest::gmock GTest::gtest_main)
    if(NOT ARG_LABELS)
        set(ARG_LABELS unit)
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
                         PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 120)
endfunction()
