# Installs the built tree into a fresh prefix, then builds and runs a small
# outside program against it twice: through find_package and through pkg-config;
# then generates, builds and runs a two-class domain library against it.
# Arguments: BUILD_DIR, WORK_DIR, SOURCE_DIR, CXX, CXX_FLAGS.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
    endif()
    set(last_output "${out}" PARENT_SCOPE)
endfunction()

function(expect_output output prefix)
    foreach(line
            "caught: Assertion failed: 3 items at consumer:1: "
            "[Info] logged here"
            "[UM:Info] : QRD : TAV Serializer_XmiReader_EmptyFileList : No files were given to read."
            "handle: empty, Assertion failed: Cannot access NULL ref. Use isValid() before calling methods at export/include/tav/TAV/Property_h:"
            "install path: ${prefix}")
        string(FIND "${output}" "${line}" at)
        if(at EQUAL -1)
            message(FATAL_ERROR "missing \"${line}\" in:\n${output}")
        endif()
    endforeach()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/consumer -B ${WORK_DIR}/consumer -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer)
run(${WORK_DIR}/consumer/consumer)
expect_output("${last_output}" "${prefix}")

run(pkg-config --with-path=${prefix}/lib/pkgconfig --cflags --libs tav)
string(STRIP "${last_output}" pc_flags)
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
separate_arguments(extra_flags UNIX_COMMAND "${CXX_FLAGS}")
run(${CXX} ${extra_flags} ${SOURCE_DIR}/consumer/main.cpp ${pc_flags}
    -Wl,-rpath,${prefix}/lib -o ${WORK_DIR}/consumer_pc)
run(${WORK_DIR}/consumer_pc)
expect_output("${last_output}" "${prefix}")

# A domain library: generated from its description by the installed generator, built
# and run against the installed tree.
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/domain -B ${WORK_DIR}/domain -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/domain)
run(${WORK_DIR}/domain/shop_user)
foreach(line "product: tea" "on its shelf: yes" "contained: yes" "shelf holds: 1" "after removal: free")
    string(FIND "${last_output}" "${line}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "missing \"${line}\" in:\n${last_output}")
    endif()
endforeach()
