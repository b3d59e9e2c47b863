# Warnings are errors on both compilers, for our own targets only.
add_library(vornic_warnings INTERFACE)
target_compile_options(vornic_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wdouble-promotion -Wformat=2
    -Wimplicit-fallthrough -Wundef -Werror)

# GCC 12's std::stable_sort uses what its own headers deprecate, and Clang says so wherever it is used.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(vornic_warnings INTERFACE -Wno-deprecated-declarations)
endif()

# Results must agree between compilers, so no compiler may fuse a multiply with an add on its own.
target_compile_options(vornic_warnings INTERFACE -ffp-contract=off)
