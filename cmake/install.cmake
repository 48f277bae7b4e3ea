# `cmake --install` gives other CMake projects the package "quillon", with the targets quillon::quillon_charts and
# quillon::quillon_report; projects that add this folder have the same names. Headers keep their folders below one
# include root.
include(CMakePackageConfigHelpers)

set(include_root "${CMAKE_INSTALL_INCLUDEDIR}/quillon")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/quillon")
set(libraries orca quillon_charts quillon_report)

foreach(library IN LISTS libraries)
    add_library(quillon::${library} ALIAS ${library})
    target_include_directories(${library} PUBLIC "$<INSTALL_INTERFACE:${include_root}>")
endforeach()
install(TARGETS ${libraries} EXPORT quillon-targets)
install(EXPORT quillon-targets NAMESPACE quillon:: DESTINATION "${package_dir}")
foreach(folder support orca chart)
    install(DIRECTORY ${folder} DESTINATION "${include_root}" FILES_MATCHING PATTERN "*.h")
endforeach()
foreach(header document/Document document/ChartParts options/ChartError options/ChartOptions options/ChartKind options/ChartData options/Listener
               package/OutputFile)
    get_filename_component(room ${header} DIRECTORY)
    install(FILES report/${header}.h DESTINATION "${include_root}/report/${room}")
endforeach()
install(TARGETS quillon-report)

configure_package_config_file(cmake/quillon-config.cmake.in "${PROJECT_BINARY_DIR}/quillon-config.cmake"
                              INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/quillon-config-version.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/quillon-config.cmake" "${PROJECT_BINARY_DIR}/quillon-config-version.cmake"
        DESTINATION "${package_dir}")
