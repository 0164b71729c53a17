# Functions that make the tests. All of it does nothing when BUILD_TESTING is off.

# zorv_add_test(<name> LABEL unit|contract|integration|system SOURCES <file>...
#               [LIBS <target>...] [INCLUDES <dir>...] [DEFINITIONS <NAME=value>...] [LINK_OPTIONS <option>...]
#               [DEPENDS <target>...] [TIMEOUT <seconds>] [PROPERTIES <test property> <value>...])
#
# A GoogleTest program with the GoogleMock main. Each test case runs as a process of its own under the label.
# DEPENDS names targets that the test uses at run time without linking them.
function(zorv_add_test name)
    if(NOT BUILD_TESTING)
        return()
    endif()
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL;TIMEOUT"
        "SOURCES;LIBS;INCLUDES;DEFINITIONS;LINK_OPTIONS;DEPENDS;PROPERTIES")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "zorv_add_test(${name}): not understood: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT arg_LABEL MATCHES "^(unit|contract|integration|system)$")
        message(FATAL_ERROR "zorv_add_test(${name}): LABEL is unit, contract, integration or system, not '${arg_LABEL}'")
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    if(ZORV_SANITIZE OR ZORV_COVERAGE)
        math(EXPR arg_TIMEOUT "${arg_TIMEOUT} * 4")
    endif()

    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE zorv_test_base ${arg_LIBS})
    target_include_directories(${name} PRIVATE ${arg_INCLUDES})
    target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
    target_link_options(${name} PRIVATE ${arg_LINK_OPTIONS})
    if(arg_DEPENDS)
        add_dependencies(${name} ${arg_DEPENDS})
    endif()
    target_precompile_headers(${name} REUSE_FROM zorv_test_pch)
    set(cSources ${arg_SOURCES})
    list(FILTER cSources INCLUDE REGEX "\\.c$")
    set_source_files_properties(${cSources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)

    gtest_discover_tests(
        ${name}
        TEST_PREFIX "${name}."
        NO_PRETTY_VALUES
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS ${arg_LABEL} TIMEOUT ${arg_TIMEOUT} ${arg_PROPERTIES}
    )
endfunction()

# The checks that look at the tree itself.
function(zorv_add_house_checks)
    if(NOT BUILD_TESTING)
        return()
    endif()
    zorv_add_house_check(arrows check-arrows)
    zorv_add_house_check(examples check-examples)
    zorv_add_house_check(format check-format)
    zorv_add_house_check(tests-built check-tests-built "${PROJECT_BINARY_DIR}")
    if(NOT ZORV_SANITIZE AND NOT ZORV_COVERAGE)
        zorv_add_house_check(hardening check-hardening --installed "${PROJECT_BINARY_DIR}")
    endif()
endfunction()

function(zorv_add_house_check name script)
    add_test(NAME house.${name} COMMAND "${PROJECT_SOURCE_DIR}/scripts/${script}" ${ARGN})
    set_tests_properties(house.${name} PROPERTIES LABELS house TIMEOUT 120)
endfunction()

# What all tests share. The framework's headers are compiled once: this saves about a second for each test file.
# The precompiled header is only valid for the same flags, so the definitions of POCO's targets belong to all tests.
if(BUILD_TESTING)
    include(GoogleTest)

    add_library(zorv_test_base INTERFACE)
    target_link_libraries(zorv_test_base INTERFACE Poco::Foundation GTest::gmock_main Threads::Threads)
    if(ZORV_COVERAGE)
        target_sources(zorv_test_base INTERFACE "${PROJECT_SOURCE_DIR}/tests/fixtures/CoverageAtDeath.cpp")
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        # The time stamp inside would make ccache miss for ever.
        target_compile_options(zorv_test_base INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:SHELL:-Xclang -fno-pch-timestamp>")
    else()
        target_compile_options(zorv_test_base INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
    endif()

    # What sanitizers do with tests takes the compiler longer than the tests take.
    if(ZORV_SANITIZE)
        target_compile_options(zorv_test_base INTERFACE -O0)
    endif()

    set(emptyUnit "${PROJECT_BINARY_DIR}/zorv_test_pch.cpp")
    file(CONFIGURE OUTPUT "${emptyUnit}" CONTENT "")
    add_library(zorv_test_pch OBJECT "${emptyUnit}")
    target_link_libraries(zorv_test_pch PRIVATE zorv_test_base)
    target_precompile_headers(zorv_test_pch PRIVATE
        <gmock/gmock.h> <gtest/gtest.h> <memory> <string> <vector>)
endif()
