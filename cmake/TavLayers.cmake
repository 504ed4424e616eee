# The library's layers: one object library tav_<layer> per row of TavLayers.txt,
# each linked to the one below it, all gathered into tqtav. Every layer shares the
# public include root, so the build runs tav_layer_check.py over a layer's files
# before it compiles them, and a wrong-way include fails the build.

set(TAV_LAYER_TABLE ${CMAKE_CURRENT_LIST_DIR}/TavLayers.txt)
set(TAV_LAYER_CHECK ${CMAKE_CURRENT_LIST_DIR}/tav_layer_check.py)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${TAV_LAYER_TABLE})

# What every layer compiles with: the library's own flags, include roots and hosts.
add_library(tav_layer_common INTERFACE)
target_link_libraries(tav_layer_common INTERFACE tav_build_flags $<BUILD_INTERFACE:tav_backtrace> fmt::fmt utf8cpp)
target_include_directories(tav_layer_common INTERFACE
    ${PROJECT_SOURCE_DIR}/export/include
    ${PROJECT_SOURCE_DIR}/platform/include
    ${PROJECT_BINARY_DIR}/generated/export/include
    ${PROJECT_BINARY_DIR}/generated
    ${PROJECT_SOURCE_DIR})

# The table's "layer" rows, with the indented lines that go on with them.
file(STRINGS ${TAV_LAYER_TABLE} tav_layer_rows)
set(TAV_LAYERS)
set(layer "")
foreach(row IN LISTS tav_layer_rows)
    string(REGEX REPLACE "#.*" "" words "${row}")
    separate_arguments(words)
    if(NOT words)
        continue()
    elseif(row MATCHES "^[ \t]" AND layer)
        list(APPEND TAV_LAYER_${layer}_OWNS ${words})
        continue()
    endif()
    list(POP_FRONT words keyword)
    set(layer "")
    if(NOT keyword STREQUAL "layer")
        continue()
    endif()
    list(POP_FRONT words layer)
    set(TAV_LAYER_${layer}_OWNS ${words})
    add_library(tav_${layer} OBJECT)
    target_link_libraries(tav_${layer} PRIVATE tav_layer_common)
    if(TAV_LAYERS)
        list(GET TAV_LAYERS -1 below)
        target_link_libraries(tav_${layer} PUBLIC tav_${below})
    endif()
    # Each layer's objects go into the one shared library.
    target_link_libraries(tqtav PRIVATE tav_${layer})
    list(APPEND TAV_LAYERS ${layer})
endforeach()

# tav_layer_made_files(<layer> <file>...): files the build makes that the layer owns
# (the generated family), checked with the layer's own.
function(tav_layer_made_files layer)
    set_property(GLOBAL APPEND PROPERTY TAV_LAYER_MADE_${layer} ${ARGN})
endfunction()

# After the layers' folders are added: one check per layer over the files it owns and
# the sources its library compiles. A layer compiles only after its check passed.
function(tav_add_layer_checks)
    foreach(layer IN LISTS TAV_LAYERS)
        set(files)
        foreach(owned IN LISTS TAV_LAYER_${layer}_OWNS)
            set(path ${PROJECT_SOURCE_DIR}/${owned})
            if(IS_DIRECTORY ${path})
                file(GLOB_RECURSE found CONFIGURE_DEPENDS ${path}/*.h ${path}/*.hpp ${path}/*.cpp ${path}/*.inc)
                list(APPEND files ${found})
            elseif(EXISTS ${path})
                list(APPEND files ${path})
            endif()
        endforeach()
        get_property(made GLOBAL PROPERTY TAV_LAYER_MADE_${layer})
        list(APPEND files ${made})
        set(stamp ${PROJECT_BINARY_DIR}/layers/${layer}.checked)
        add_custom_command(OUTPUT ${stamp}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/layers
            COMMAND ${Python3_EXECUTABLE} ${TAV_LAYER_CHECK} ${TAV_LAYER_TABLE} ${layer} ${stamp}
                    ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated -- ${files}
                    # What the library compiles, less CMake's own unity and header batches.
                    --compiled $<FILTER:$<TARGET_PROPERTY:tav_${layer},SOURCES>,EXCLUDE,/CMakeFiles/>
            DEPENDS ${TAV_LAYER_TABLE} ${TAV_LAYER_CHECK} ${files}
            COMMENT "Checking the includes and sources of layer ${layer}"
            COMMAND_EXPAND_LISTS
            VERBATIM)
        add_custom_target(tav_${layer}_layer_check DEPENDS ${stamp})
        if(made)
            add_dependencies(tav_${layer}_layer_check tav_generated)
        endif()
        # Change tracking and the sequences still name generated interfaces.
        add_dependencies(tav_${layer} tav_${layer}_layer_check tav_generated)
    endforeach()
endfunction()

# Hand-written sources of the family layer compile on their own, outside the
# generated family's unity batches.
function(tav_skip_unity)
    set_source_files_properties(${ARGN} TARGET_DIRECTORY tav_family PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
