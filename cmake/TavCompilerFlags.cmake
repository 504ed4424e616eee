# Flags shared by every target of the project.
function(tav_apply_flags target)
    target_compile_options(${target} INTERFACE
        -Wall -Wextra -Werror
        # Traces name functions and lines in every configuration.
        -g)
    # The clang build also guards what the layered interfaces invite: hidden names,
    # bases without virtual destructors, overrides left unmarked, silent fall-through.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        target_compile_options(${target} INTERFACE
            -Wshadow -Wnon-virtual-dtor -Wsuggest-override -Wimplicit-fallthrough)
    endif()
    if(TAV_SANITIZE)
        target_compile_options(${target} INTERFACE
            -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${target} INTERFACE -fsanitize=address,undefined)
    endif()
    # Coverage for libFuzzer in every target; the fuzz targets add its main.
    if(TAV_BUILD_FUZZ)
        target_compile_options(${target} INTERFACE -fsanitize=fuzzer-no-link)
        target_link_options(${target} INTERFACE -fsanitize=fuzzer-no-link)
    endif()
endfunction()
