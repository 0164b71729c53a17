# The libraries from outside, all of them packages of the distribution (scripts/packages.txt), all as system headers.

find_package(Threads REQUIRED)
find_package(Poco REQUIRED COMPONENTS Foundation XML Net NetSSL)
find_package(Re2 REQUIRED)
find_package(SQLite3 REQUIRED)
find_package(Systemd REQUIRED)

if(BUILD_TESTING)
    find_package(GTest REQUIRED)
endif()
