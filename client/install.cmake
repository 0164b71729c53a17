# What is installed of the client: the library for those who run applications, the rest for those who build them.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(packageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/zorv_client")
set(pkgConfigFolder "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# Both packages find the files relative to themselves: an install tree can be moved.
file(RELATIVE_PATH prefixFromPackages "/${pkgConfigFolder}" "/")
string(REGEX REPLACE "/$" "" prefixFromPackages "${prefixFromPackages}")
configure_file(zorv_client.pc.in zorv_client.pc @ONLY)
configure_package_config_file(zorv_clientConfig.cmake.in zorv_clientConfig.cmake INSTALL_DESTINATION "${packageFolder}")
write_basic_package_version_file(zorv_clientConfigVersion.cmake
    VERSION ${ZORV_CLIENT_VERSION} COMPATIBILITY SameMajorVersion)

install(
    TARGETS zorv_client
    EXPORT zorv_clientTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT client NAMELINK_COMPONENT client-dev
)
install(FILES inc/zorv_client.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT client-dev)
install(FILES man/zorv_client.3 DESTINATION "${CMAKE_INSTALL_MANDIR}/man3" COMPONENT client-dev)
foreach(function Open Raise Clear Alert Flush Counters Close ResultText)
    set(page "${CMAKE_CURRENT_BINARY_DIR}/zorvClient${function}.3")
    file(WRITE "${page}" ".so man3/zorv_client.3\n")
    install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man3" COMPONENT client-dev)
endforeach()
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/zorv_client.pc"
    DESTINATION "${pkgConfigFolder}" COMPONENT client-dev)
install(EXPORT zorv_clientTargets NAMESPACE zorv:: DESTINATION "${packageFolder}" COMPONENT client-dev)
install(
    FILES
        "${CMAKE_CURRENT_BINARY_DIR}/zorv_clientConfig.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/zorv_clientConfigVersion.cmake"
    DESTINATION "${packageFolder}"
    COMPONENT client-dev
)
