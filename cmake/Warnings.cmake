# Warnings of both compilers, for our own targets only. They are errors in the folders of the presets,
# which ./dev builds in; whoever builds elsewhere may have a compiler that nobody here has seen.
set(presets release debug asan tsan clang fuzz)
list(TRANSFORM presets PREPEND "${CMAKE_SOURCE_DIR}/build/" OUTPUT_VARIABLE preset_folders)
if(CMAKE_BINARY_DIR IN_LIST preset_folders)
    set(warnings_are_errors ON)
else()
    set(warnings_are_errors OFF)
endif()
option(VORNIC_WERROR "Warnings are errors" ${warnings_are_errors})

add_library(vornic_warnings INTERFACE)
target_compile_options(vornic_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wdouble-promotion -Wformat=2
    -Wimplicit-fallthrough -Wundef $<$<BOOL:${VORNIC_WERROR}>:-Werror>)

# GCC 12's std::stable_sort uses what its own headers deprecate, and Clang says so wherever it is used.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(vornic_warnings INTERFACE -Wno-deprecated-declarations)
endif()

# Results must agree between compilers, so no compiler may fuse a multiply with an add on its own.
target_compile_options(vornic_warnings INTERFACE -ffp-contract=off)
