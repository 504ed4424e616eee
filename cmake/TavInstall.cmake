# Installation rules. The install tree has the build tree's layout:
#   <prefix>/lib/libtqtav.so, <prefix>/share/tav/..., <prefix>/include/{tav,BRIX}
# The library finds its data relative to itself, so both trees work unchanged.
include(CMakePackageConfigHelpers)

# Fixed rather than GNUInstallDirs' multiarch directory: the install path is
# the parent of the library's directory.
set(TAV_INSTALL_LIBDIR lib)
set(TAV_INSTALL_CMAKEDIR ${TAV_INSTALL_LIBDIR}/cmake/TAV)

install(TARGETS tqtav EXPORT TAVTargets
    LIBRARY DESTINATION ${TAV_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY export/include/ platform/include/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp" PATTERN "*.inc"
    # The platform adapters stay inside the library: no installed header includes them.
    PATTERN "hull" EXCLUDE)
install(DIRECTORY share/ DESTINATION ${CMAKE_INSTALL_DATADIR})

install(EXPORT TAVTargets NAMESPACE TAV:: DESTINATION ${TAV_INSTALL_CMAKEDIR})
configure_package_config_file(cmake/TAVConfig.cmake.in
    ${PROJECT_BINARY_DIR}/cmake/TAVConfig.cmake
    INSTALL_DESTINATION ${TAV_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/TAVConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/cmake/TAVConfig.cmake
    ${PROJECT_BINARY_DIR}/cmake/TAVConfigVersion.cmake
    DESTINATION ${TAV_INSTALL_CMAKEDIR})

configure_file(cmake/tav.pc.in ${PROJECT_BINARY_DIR}/cmake/tav.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/tav.pc DESTINATION ${TAV_INSTALL_LIBDIR}/pkgconfig)
