# Installation rules. The install tree has the build tree's layout:
#   <prefix>/lib/libtqtav.so, <prefix>/share/tav/..., <prefix>/include/{tav,BRIX,hull}
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
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp" PATTERN "*.inc")
install(DIRECTORY share/ DESTINATION ${CMAKE_INSTALL_DATADIR})

# The generator and the kernel's description, for domain libraries (tav_add_domain).
install(DIRECTORY tools/tavgen/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tav/tavgen
    FILES_MATCHING PATTERN "*.py" PATTERN "__pycache__" EXCLUDE)
install(FILES kernel/TAV/TAV.tavmeta DESTINATION ${CMAKE_INSTALL_DATADIR}/tav/descriptions)
install(FILES cmake/TavDomain.cmake DESTINATION ${TAV_INSTALL_CMAKEDIR})

install(EXPORT TAVTargets NAMESPACE TAV:: DESTINATION ${TAV_INSTALL_CMAKEDIR})
configure_package_config_file(cmake/TAVConfig.cmake.in
    ${PROJECT_BINARY_DIR}/cmake/TAVConfig.cmake
    INSTALL_DESTINATION ${TAV_INSTALL_CMAKEDIR}
    PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/TAVConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/cmake/TAVConfig.cmake
    ${PROJECT_BINARY_DIR}/cmake/TAVConfigVersion.cmake
    DESTINATION ${TAV_INSTALL_CMAKEDIR})

configure_file(cmake/tav.pc.in ${PROJECT_BINARY_DIR}/cmake/tav.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/tav.pc DESTINATION ${TAV_INSTALL_LIBDIR}/pkgconfig)
