# tav_add_domain(<target> DESCRIPTION <file.tavmeta> [IMPORT_PATH <dir>...] [SOURCES <hand-written>...])
#
# Generates the metaclass family of a domain description and builds it as a shared
# library <target> linked to the TAV library. The description's public headers are
# in the target's include path; its object and state classes (kernel/<Package>/...)
# are reachable by the target's own sources, which write the hand-maintained
# operations the description declares. Descriptions the kernel ships (TAV.tavmeta)
# are found without an IMPORT_PATH.
#
# Expects TAV_TAVGEN (the generator script) and TAV_DESCRIPTION_DIR, which the TAV
# package configuration, or the TAV build itself, sets.
function(tav_add_domain target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION" "IMPORT_PATH;SOURCES")
    if(NOT arg_DESCRIPTION)
        message(FATAL_ERROR "tav_add_domain(${target}): DESCRIPTION is required")
    endif()
    get_filename_component(description ${arg_DESCRIPTION} ABSOLUTE)
    find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)
    set(out ${CMAKE_CURRENT_BINARY_DIR}/${target}_generated)
    set(command ${Python3_EXECUTABLE} ${TAV_TAVGEN})
    foreach(dir IN LISTS arg_IMPORT_PATH TAV_DESCRIPTION_DIR)
        list(APPEND command -I ${dir})
    endforeach()

    # The file list is known at configure time, so the build can name every output.
    execute_process(COMMAND ${command} ${description} --list
                    OUTPUT_VARIABLE files RESULT_VARIABLE result ERROR_VARIABLE error)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "tavgen: ${error}")
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${description})
    string(REPLACE "\n" ";" files "${files}")
    list(FILTER files EXCLUDE REGEX "^$")
    list(TRANSFORM files PREPEND ${out}/ OUTPUT_VARIABLE outputs)
    set(sources ${outputs})
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    get_filename_component(tool_dir ${TAV_TAVGEN} DIRECTORY)
    file(GLOB tool ${TAV_TAVGEN} ${tool_dir}/tavgen/*.py)
    add_custom_command(OUTPUT ${outputs}
        COMMAND ${command} ${description} ${out}
        DEPENDS ${description} ${tool}
        COMMENT "Generating the metaclass family of ${arg_DESCRIPTION}"
        VERBATIM)

    add_library(${target} SHARED ${sources} ${arg_SOURCES})
    # The generated sources share most of their headers: built in batches they compile
    # several times faster. Hand-written sources stay on their own.
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 50)
    if(arg_SOURCES)
        set_source_files_properties(${arg_SOURCES} TARGET_DIRECTORY ${target} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(${target}
        PUBLIC $<BUILD_INTERFACE:${out}/export/include>
        PRIVATE ${out})
    target_link_libraries(${target} PUBLIC TAV::tav)
endfunction()
