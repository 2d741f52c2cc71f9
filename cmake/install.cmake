# Install rules: the libraries, the public headers under include/nxfv/, the
# CMake package (NxFileViewer::core, NxFileViewer::linux, and
# NxFileViewer::qt with the qt component), pkg-config files and the nxfv
# command.
include(CMakePackageConfigHelpers)

set(NXFV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/NxFileViewer)

install(TARGETS nxfv_core nxfv_linux
  EXPORT NxFileViewerTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET nxfv)
  install(TARGETS nxfv RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The Qt front end is a component of its own (`cmake --install <build>
# --component qt`): a host of the core alone, and the Debian package, stay
# free of Qt.
if(TARGET nxfv_qt)
  install(TARGETS nxfv_qt
    EXPORT NxFileViewerQtTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT qt EXCLUDE_FROM_ALL
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT qt EXCLUDE_FROM_ALL
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT qt EXCLUDE_FROM_ALL
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(EXPORT NxFileViewerQtTargets
    NAMESPACE NxFileViewer::
    DESTINATION ${NXFV_CMAKE_DIR}
    COMPONENT qt EXCLUDE_FROM_ALL)
  if(TARGET nxfv-browser)
    install(TARGETS nxfv-browser RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT qt EXCLUDE_FROM_ALL)
  endif()
endif()

# The headers keep the source tree's folders, so an installed include reads
# exactly like one inside the repository.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nxfv
  FILES_MATCHING PATTERN "*.h")
install(FILES ${NXFV_GENERATED_INCLUDE_DIR}/nxfv/version.h ${NXFV_GENERATED_INCLUDE_DIR}/nxfv/export.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nxfv)

install(EXPORT NxFileViewerTargets
  NAMESPACE NxFileViewer::
  DESTINATION ${NXFV_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/NxFileViewerConfig.cmake.in
  ${PROJECT_BINARY_DIR}/NxFileViewerConfig.cmake
  INSTALL_DESTINATION ${NXFV_CMAKE_DIR})
# 0.x releases promise nothing across minor versions either; SameMajorVersion
# is what hosts will rely on from 1.0.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/NxFileViewerConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/NxFileViewerConfig.cmake
  ${PROJECT_BINARY_DIR}/NxFileViewerConfigVersion.cmake
  DESTINATION ${NXFV_CMAKE_DIR})

# pkg-config, for hosts that do not use CMake. The headers need C++20. The
# prefix is found from the file's own place, so `cmake --install --prefix`
# anywhere gives working files.
file(RELATIVE_PATH NXFV_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" NXFV_PC_TO_PREFIX "${NXFV_PC_TO_PREFIX}")
foreach(pc IN ITEMS nxfileviewer nxfileviewer-linux)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${pc}.pc.in ${PROJECT_BINARY_DIR}/${pc}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${pc}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
