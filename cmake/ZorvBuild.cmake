# How everything here is compiled and linked: language level, build types, warnings, sanitizers, coverage, speed-ups.
#
# Assertions are part of the behaviour: NDEBUG is never defined, in no build type.

set(ZORV_SANITIZE "" CACHE STRING "Sanitizers to build with: empty, address,undefined or thread")
option(ZORV_COVERAGE "Count the lines that the tests run" OFF)
option(ZORV_FUZZ "Build the fuzz targets with the fuzzer of clang, instead of replaying their corpora" OFF)
option(ZORV_BENCH "Build the benchmarks" OFF)
option(ZORV_CCACHE "Use ccache when it is installed" ON)
option(ZORV_LLD "Link with lld when it is installed" ON)

# --- Language

set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# --- Build types

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Debug CACHE STRING "Debug, Release or RelWithDebInfo" FORCE)
endif()

# The three builds of a full test run are made anew again and again: line tables are enough for a backtrace, and take a
# third of the time of full debugging information. RelWithDebInfo has the latter.
if(ZORV_COVERAGE)
    set(debugFlags "-O0 -g1")
else()
    set(debugFlags "-O1 -g1")
endif()

foreach(language IN ITEMS C CXX)
    set(CMAKE_${language}_FLAGS_DEBUG "${debugFlags}")
    set(CMAKE_${language}_FLAGS_RELEASE "-O2")
    set(CMAKE_${language}_FLAGS_RELWITHDEBINFO "-O2 -g")
    set(CMAKE_${language}_FLAGS_MINSIZEREL "-Os")
endforeach()
add_compile_options(-UNDEBUG)

# --- Warnings

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

# --- Size: what is never reached is not shipped

add_compile_options(-ffunction-sections -fdata-sections)
add_link_options(-Wl,--as-needed -Wl,--gc-sections)

# --- Library checks of the standard library, where speed does not matter

if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_definitions($<$<COMPILE_LANGUAGE:CXX>:_GLIBCXX_ASSERTIONS>)
endif()

# --- Sanitizers, fuzzing and coverage

if(ZORV_SANITIZE)
    add_compile_options(-fsanitize=${ZORV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZORV_SANITIZE})
endif()

if(ZORV_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(ZORV_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

# --- Speed of the build

if(ZORV_LLD)
    find_program(ZORV_LLD_PROGRAM ld.lld)
    if(ZORV_LLD_PROGRAM)
        add_link_options(-fuse-ld=lld)
    endif()
endif()

# Objects that count lines name the folder they were built in, so they are not shared between folders.
if(ZORV_CCACHE AND NOT ZORV_COVERAGE)
    find_program(ZORV_CCACHE_PROGRAM ccache)
    if(ZORV_CCACHE_PROGRAM)
        set(launcher
            env
            CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
            CCACHE_NOHASHDIR=1
            CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
            ${ZORV_CCACHE_PROGRAM}
        )
        set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
        set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
    endif()
endif()
