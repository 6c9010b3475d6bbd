# How every part of the house is built.

# Settings of all targets: C++20, warnings, optional sanitizers (CUEDRILL_SANITIZERS, a list for -fsanitize).
set(CUEDRILL_SANITIZERS "" CACHE STRING "Comma-separated list for -fsanitize; empty for none")
option(CUEDRILL_WERROR "Treat warnings as errors" OFF)

# A compiler cache finds its objects by the text that the compiler reads, and by default refuses precompiled headers.
set(precompiled_by_default ON)
if(CMAKE_CXX_COMPILER_LAUNCHER)
    set(precompiled_by_default OFF)
endif()
option(CUEDRILL_PRECOMPILED_HEADERS "Compile the headers that most files include once" ${precompiled_by_default})

add_library(cuedrill_options INTERFACE)
target_compile_features(cuedrill_options INTERFACE cxx_std_20)
target_include_directories(cuedrill_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(cuedrill_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    -Woverloaded-virtual -Wnull-dereference -Wimplicit-fallthrough
    $<$<BOOL:${CUEDRILL_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # At -O3 it warns of std::string's own copying wherever a string is put behind a literal (GCC bug 105651).
    target_compile_options(cuedrill_options INTERFACE -Wno-restrict)
endif()
if(CUEDRILL_SANITIZERS)
    target_compile_options(cuedrill_options INTERFACE
        -fsanitize=${CUEDRILL_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(cuedrill_options INTERFACE -fsanitize=${CUEDRILL_SANITIZERS})
endif()
# A fault of the program ends it instead of serving an attacker with a hostile file: checked copies,
# a guarded stack, tables of functions that are read-only from the start on. Position independence is the compilers' default.
# The checked copies need an optimised build.
target_compile_options(cuedrill_options INTERFACE
    -fstack-protector-strong -fstack-clash-protection $<$<CONFIG:Release,RelWithDebInfo>:-D_FORTIFY_SOURCE=2>)
target_link_options(cuedrill_options INTERFACE -Wl,-z,relro,-z,now)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# cuedrill_precompile(<target> <header>...)
# Headers from outside the project that most files of the target include. Each file includes what it needs all the same.
function(cuedrill_precompile target)
    if(CUEDRILL_PRECOMPILED_HEADERS)
        list(TRANSFORM ARGN REPLACE "^(.+)$" "<\\1>")
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# What most files of the libraries include. To parse it takes half of the time in which such a file is compiled.
add_library(cuedrill_headers OBJECT ${CMAKE_CURRENT_LIST_DIR}/precompiled.cpp)
target_link_libraries(cuedrill_headers PRIVATE cuedrill_options)
cuedrill_precompile(cuedrill_headers algorithm chrono cstdint functional memory optional string string_view utility variant vector)

# cuedrill_library(<folder> [TOOLKIT] SOURCES <file>... [LINKS <target>...])
# One folder of src/ is one library: "platform/sqlite" gives the target cuedrill_platform_sqlite. TOOLKIT is for those
# that are linked with Qt. It asks for -fPIC, so they cannot use headers that are precompiled without it.
function(cuedrill_library folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "TOOLKIT" "" "SOURCES;LINKS")
    string(REPLACE "/" "_" name ${folder})
    add_library(cuedrill_${name} STATIC ${arg_SOURCES})
    target_link_libraries(cuedrill_${name} PUBLIC cuedrill_options ${arg_LINKS})
    if(CUEDRILL_PRECOMPILED_HEADERS AND NOT arg_TOOLKIT)
        target_precompile_headers(cuedrill_${name} REUSE_FROM cuedrill_headers)
    endif()
endfunction()

# cuedrill_test(<folder> SOURCES <file>... [LINKS <target>...])
# One folder of tests/ is one test program: "platform/sqlite" gives the target test_platform_sqlite.
function(cuedrill_test folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    string(REPLACE "/" "_" name ${folder})
    add_executable(test_${name} ${arg_SOURCES})
    target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(test_${name} PRIVATE cuedrill_options ${arg_LINKS} GTest::gtest GTest::gtest_main)
    if(CUEDRILL_PRECOMPILED_HEADERS)
        target_precompile_headers(test_${name} REUSE_FROM cuedrill_test_headers)
    endif()
    gtest_discover_tests(test_${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# cuedrill_test_library(<target> SOURCES <file>... LINKS <target>...)
# What several test programs are linked with: its sources are compiled once for all of them.
function(cuedrill_test_library target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(${target} STATIC ${arg_SOURCES})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${target} PUBLIC cuedrill_options ${arg_LINKS} GTest::gtest)
    if(CUEDRILL_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} REUSE_FROM cuedrill_test_headers)
    endif()
endfunction()
