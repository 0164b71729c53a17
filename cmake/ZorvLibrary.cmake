# Functions that make the libraries of the house.

# zorv_add_library(<name> SOURCES <file>... [INCLUDES <dir>...] [LIBS <target>...])
#
# A static library that can be linked into a shared one: position independent, nothing visible from outside.
# INCLUDES and LIBS reach whoever links it.
function(zorv_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;INCLUDES;LIBS")
    zorv_refuse_unparsed(zorv_add_library ${name})

    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${arg_INCLUDES})
    target_link_libraries(${name} PUBLIC ${arg_LIBS})
    zorv_hide_symbols(${name})
endfunction()

# zorv_add_program(<name> SOURCES <file>... [LIBS <target>...])
#
# A program to install: position independent, so that it is loaded at an address nobody can foresee.
function(zorv_add_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBS")
    zorv_refuse_unparsed(zorv_add_program ${name})

    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBS})
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()

# zorv_add_plugin(<name> MAP <version script> SOURCES <file>... [LIBS <target>...] [EXPORTS <symbol>...])
#
# A shared library for the middleware to load. It exports what its version script names and nothing else; EXPORTS
# repeats the names for the check that reads them back from the finished file.
function(zorv_add_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "MAP" "SOURCES;LIBS;EXPORTS")
    zorv_refuse_unparsed(zorv_add_plugin ${name})
    cmake_path(ABSOLUTE_PATH arg_MAP BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")

    add_library(${name} SHARED ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBS})
    target_link_options(${name} PRIVATE "LINKER:--version-script=${arg_MAP}")
    set_target_properties(${name} PROPERTIES LINK_DEPENDS "${arg_MAP}")
    zorv_hide_symbols(${name})

    # A sanitizer's own symbols are found in the program that loads the library.
    if(NOT ZORV_SANITIZE)
        target_link_options(${name} PRIVATE "LINKER:--no-undefined")
    endif()

    if(BUILD_TESTING AND arg_EXPORTS)
        add_test(NAME house.exports.${name}
            COMMAND "${PROJECT_SOURCE_DIR}/scripts/check-exports" $<TARGET_FILE:${name}> ${arg_EXPORTS})
        set_tests_properties(house.exports.${name} PROPERTIES LABELS house TIMEOUT 60)
    endif()
endfunction()

# zorv_check_headers(<name> DIRECTORY <dir> LANGUAGES <C|CXX>... [LIBS <target>...])
#
# Compiles each header of the folder alone and twice included, in each of the languages: a published header stands on
# its own feet. The folder is the list, so that none is forgotten.
function(zorv_check_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DIRECTORY" "LANGUAGES;LIBS")
    zorv_refuse_unparsed(zorv_check_headers ${name})
    set(suffixC c)
    set(suffixCXX cpp)

    cmake_path(ABSOLUTE_PATH arg_DIRECTORY BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
    file(GLOB headers RELATIVE "${arg_DIRECTORY}" CONFIGURE_DEPENDS "${arg_DIRECTORY}/*.h")
    set(units)
    foreach(header IN LISTS headers)
        foreach(language IN LISTS arg_LANGUAGES)
            set(unit "${CMAKE_CURRENT_BINARY_DIR}/${name}/${header}.${suffix${language}}")
            file(CONFIGURE OUTPUT "${unit}" CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
            list(APPEND units "${unit}")
        endforeach()
    endforeach()

    add_library(${name} OBJECT ${units})
    target_link_libraries(${name} PRIVATE ${arg_LIBS})
endfunction()

function(zorv_hide_symbols name)
    set_target_properties(
        ${name}
        PROPERTIES
            POSITION_INDEPENDENT_CODE ON
            C_VISIBILITY_PRESET hidden
            CXX_VISIBILITY_PRESET hidden
            VISIBILITY_INLINES_HIDDEN ON
    )
endfunction()

# A misspelt keyword would otherwise end up in the list before it, silently.
macro(zorv_refuse_unparsed function name)
    if(arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "${function}(${name}): not understood: ${arg_UNPARSED_ARGUMENTS}${arg_KEYWORDS_MISSING_VALUES}")
    endif()
endmacro()
