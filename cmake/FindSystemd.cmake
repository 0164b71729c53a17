# Finds what tells systemd about a service, and offers it as Systemd::Systemd.

find_path(Systemd_INCLUDE_DIR systemd/sd-daemon.h)
find_library(Systemd_LIBRARY systemd)
mark_as_advanced(Systemd_INCLUDE_DIR Systemd_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Systemd REQUIRED_VARS Systemd_LIBRARY Systemd_INCLUDE_DIR)

if(Systemd_FOUND AND NOT TARGET Systemd::Systemd)
    add_library(Systemd::Systemd UNKNOWN IMPORTED)
    set_target_properties(
        Systemd::Systemd
        PROPERTIES
            IMPORTED_LOCATION "${Systemd_LIBRARY}"
            INTERFACE_INCLUDE_DIRECTORIES "${Systemd_INCLUDE_DIR}"
    )
endif()
