# Warnings are errors in everything the project compiles itself.
add_compile_options(-Wall -Wextra -Werror)

if(GNSS_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined -fno-sanitize-recover=all)
endif()

if(GNSS_RELEASE_BUILD)
    set(GNSS_VERSION_TEXT "${PROJECT_VERSION}")
    # The released tool lives in the console's small flash and spends its run asleep in time-outs,
    # so it is optimised for size (after the build type's own -O, so this wins): the stripped armhf
    # tool goes from 215 KB unoptimised, 129 KB at -O2, to 96 KB. Each function and datum gets a
    # section of its own, which lets the linker drop those nothing calls (TCLAP's and the standard
    # library's unused template members), and only the shared libraries actually used are needed.
    add_compile_options(-Os -ffunction-sections -fdata-sections)
    add_link_options(-Wl,--gc-sections -Wl,--as-needed)
else()
    set(GNSS_VERSION_TEXT "devel")
endif()
