# Every dependency comes from a Debian package installed by scripts/setup; a library
# joins this list with the first code that uses it.
find_package(Threads REQUIRED)
find_package(Boost 1.74 REQUIRED COMPONENTS thread filesystem date_time stacktrace_backtrace)
find_package(utf8cpp CONFIG REQUIRED)
find_package(fmt CONFIG REQUIRED)
find_package(uriparser 0.9 CONFIG REQUIRED)
find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)

if(TAV_BUILD_TESTS)
    find_package(GTest CONFIG REQUIRED)
    include(GoogleTest)
endif()
if(TAV_BUILD_BENCH)
    find_package(benchmark CONFIG REQUIRED)
endif()

# Boost.Stacktrace's libbacktrace backend names functions, files and lines;
# it needs backtrace.h, which only GCC's private include directory holds.
# Copying the one header keeps GCC's other private headers away from Clang.
file(GLOB TAV_BACKTRACE_HEADER /usr/lib/gcc/${CMAKE_LIBRARY_ARCHITECTURE}/*/include/backtrace.h)
if(NOT TAV_BACKTRACE_HEADER)
    message(FATAL_ERROR "backtrace.h of GCC's libbacktrace not found")
endif()
list(GET TAV_BACKTRACE_HEADER -1 TAV_BACKTRACE_HEADER)
configure_file(${TAV_BACKTRACE_HEADER} ${PROJECT_BINARY_DIR}/backtrace/include/backtrace.h COPYONLY)
add_library(tav_backtrace INTERFACE)
target_include_directories(tav_backtrace SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/backtrace/include)
target_compile_definitions(tav_backtrace INTERFACE BOOST_STACKTRACE_USE_BACKTRACE)
target_link_libraries(tav_backtrace INTERFACE Boost::stacktrace_backtrace backtrace)
