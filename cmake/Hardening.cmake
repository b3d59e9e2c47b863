# What everything that ships is compiled and linked with: what overruns a buffer or jumps where no
# function begins ends the program, and no table of functions can be overwritten. Tests check the
# result (tests/Vornic/hardening). Without optimisation or beside a sanitizer, which does the same
# better, the compiler's share would do nothing.
add_library(vornic_hardening INTERFACE)
target_link_options(vornic_hardening INTERFACE -pie LINKER:-z,relro,-z,now,-z,noexecstack)
if(NOT VORNIC_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_options(vornic_hardening INTERFACE
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong -fstack-clash-protection)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
        target_compile_options(vornic_hardening INTERFACE -fcf-protection)
    elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
        target_compile_options(vornic_hardening INTERFACE -mbranch-protection=standard)
    endif()
endif()
