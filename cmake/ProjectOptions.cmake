# Warnings are errors in everything the project compiles itself.
add_compile_options(-Wall -Wextra -Werror)

if(GNSS_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined -fno-sanitize-recover=all)
endif()

if(GNSS_RELEASE_BUILD)
    set(GNSS_VERSION_TEXT "${PROJECT_VERSION}")
else()
    set(GNSS_VERSION_TEXT "devel")
endif()
