# `cmake --install` gives other projects the libraries and their public headers: to CMake as the package "quillon", with
# the targets quillon::quillon_charts and quillon::quillon_report, and to others through pkg-config. Projects that add
# this folder have the same names.
include(CMakePackageConfigHelpers)

set(include_root "${CMAKE_INSTALL_INCLUDEDIR}/quillon")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/quillon")

install(TARGETS orca quillon_charts quillon_report EXPORT quillon-targets FILE_SET HEADERS DESTINATION "${include_root}")
install(EXPORT quillon-targets NAMESPACE quillon:: DESTINATION "${package_dir}")
configure_package_config_file(cmake/quillon-config.cmake.in "${PROJECT_BINARY_DIR}/quillon-config.cmake"
                              INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/quillon-config-version.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/quillon-config.cmake" "${PROJECT_BINARY_DIR}/quillon-config-version.cmake"
        DESTINATION "${package_dir}")

file(RELATIVE_PATH prefix_from_pkgconfig "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
set(pkgconfig_requires "xerces-c")
set(pkgconfig_requires_private "expat zlib")
if(NOT BUILD_SHARED_LIBS)
    # Static libraries leave it to the program to link what they use.
    string(APPEND pkgconfig_requires " ${pkgconfig_requires_private}")
endif()
configure_file(cmake/quillon.pc.in "${PROJECT_BINARY_DIR}/quillon.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/quillon.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
install(FILES LICENSE NOTICE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(TARGET quillon-report)
    install(TARGETS quillon-report)
    set(pages "${PROJECT_BINARY_DIR}/report")
    install(FILES "${pages}/quillon-report.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES "${pages}/quillon-report.bash" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
            RENAME quillon-report)
    install(FILES "${pages}/_quillon-report" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions")
endif()
