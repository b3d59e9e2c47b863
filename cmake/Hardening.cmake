# vornic_hardened(TARGET...): for programs that read what strangers made or have more rights than
# the user: what overruns a buffer ends them. Without optimisation or beside a sanitizer, which does
# the same better, it would do nothing.
function(vornic_hardened)
    foreach(target ${ARGV})
        target_link_options(${target} PRIVATE LINKER:-z,relro,-z,now)
        if(NOT VORNIC_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
            target_compile_options(${target} PRIVATE
                -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
        endif()
    endforeach()
endfunction()
