# Applied to everything, because a sanitizer only sees what was compiled with it.
if(VORNIC_SANITIZE)
    add_compile_options(-fsanitize=${VORNIC_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VORNIC_SANITIZE})
endif()
