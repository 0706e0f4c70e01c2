# install(), find_package(Tesseralis) and pkg-config.

include(CMakePackageConfigHelpers)

install(TARGETS core EXPORT TesseralisTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS tesseralis RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY src/core/src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tesseralis
        FILES_MATCHING PATTERN "*.h" PATTERN platform EXCLUDE PATTERN detail EXCLUDE)
install(EXPORT TesseralisTargets NAMESPACE Tesseralis:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tesseralis)

configure_package_config_file(cmake/TesseralisConfig.cmake.in TesseralisConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tesseralis)
write_basic_package_version_file(TesseralisConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TesseralisConfig.cmake ${PROJECT_BINARY_DIR}/TesseralisConfigVersion.cmake
              cmake/TesseralisModule.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tesseralis)

configure_file(cmake/tesseralis.pc.in tesseralis.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tesseralis.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
