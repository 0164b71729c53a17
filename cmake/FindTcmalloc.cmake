# Finds the thread-caching allocator, without its profilers, and offers it as Tcmalloc::Tcmalloc.

find_library(Tcmalloc_LIBRARY tcmalloc_minimal)
mark_as_advanced(Tcmalloc_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Tcmalloc REQUIRED_VARS Tcmalloc_LIBRARY)

if(Tcmalloc_FOUND AND NOT TARGET Tcmalloc::Tcmalloc)
    add_library(Tcmalloc::Tcmalloc UNKNOWN IMPORTED)
    set_target_properties(Tcmalloc::Tcmalloc PROPERTIES IMPORTED_LOCATION "${Tcmalloc_LIBRARY}")
endif()
