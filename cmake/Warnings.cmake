# Warnings are errors on both compilers, for our own targets only.
add_library(vornic_warnings INTERFACE)
target_compile_options(vornic_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wdouble-promotion -Wformat=2
    -Wimplicit-fallthrough -Wundef -Werror)

# Results must agree between compilers, so no compiler may fuse a multiply with an add on its own.
target_compile_options(vornic_warnings INTERFACE -ffp-contract=off)
