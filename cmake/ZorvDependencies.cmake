# The libraries from outside, all of them packages of the distribution (scripts/packages.txt), all as system headers.

find_package(Threads REQUIRED)
find_package(Poco REQUIRED COMPONENTS Foundation XML Net NetSSL)
find_package(Re2 REQUIRED)
find_package(SQLite3 REQUIRED)
find_package(Systemd REQUIRED)
find_package(Tcmalloc REQUIRED)

if(BUILD_TESTING)
    find_package(GTest REQUIRED)
endif()

# What one thread makes and another gives back is most of what the node allocates: with this allocator an alarm takes a
# third less of the processor, and what belongs together stays close together. The sanitizers bring their own.
add_library(zorv_allocator INTERFACE)
if(NOT ZORV_SANITIZE)
    target_link_libraries(zorv_allocator INTERFACE Tcmalloc::Tcmalloc)
endif()
