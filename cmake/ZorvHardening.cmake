# What turns a mistake in memory into an end instead of a way in: in everything that is built, so that the tests run what
# is shipped. scripts/check-hardening reads it back from the finished files.
#
# Instrumented builds go without the compiler's part: a sanitizer sees more, and is never shipped.

include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)
include(CheckPIESupported)

# Programs are loaded at addresses that nobody can foresee.
check_pie_supported(LANGUAGES CXX)

# Nothing that the linker has settled is writable any more, nothing that is writable can be executed.
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack -Wl,-z,text)

# --- The compiler's part

function(zorv_harden_compiler)
    if(ZORV_SANITIZE OR ZORV_COVERAGE)
        return()
    endif()
    add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -Wformat=2)

    set(wanted -fstack-clash-protection)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i[3-6]86")
        list(APPEND wanted -fcf-protection=full)
    elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
        list(APPEND wanted -mbranch-protection=standard)
    endif()
    foreach(flag IN LISTS wanted)
        string(MAKE_C_IDENTIFIER "ZORV_HAS${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            add_compile_options(${flag})
        endif()
    endforeach()

    # The C library's start-up code says nothing about shadow stacks, but only calls and returns. It is not ready for
    # checked indirect branches everywhere: that mark stands in the files where it is, the landing pads in any case.
    if(ZORV_HAS_fcf_protection_full)
        check_linker_flag(CXX -Wl,-z,shstk ZORV_HAS_z_shstk)
        if(ZORV_HAS_z_shstk)
            add_link_options(-Wl,-z,shstk)
        endif()
    endif()
endfunction()

zorv_harden_compiler()
