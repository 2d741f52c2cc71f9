# `cpack -G DEB`: one package with the libraries, the headers, the CMake and
# pkg-config files and the nxfv command. Configure with
# -DCMAKE_INSTALL_PREFIX=/usr so the libraries land in the multiarch folder.
set(CPACK_PACKAGE_NAME nxfileviewer)
set(CPACK_PACKAGE_VENDOR "NxFileViewer developers")
set(CPACK_PACKAGE_CONTACT "NxFileViewer developers <nxfv@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
# The C library, libstdc++ and friends that the installed binaries need,
# computed by dpkg-shlibdeps instead of listed by hand.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The mime database gives the type column its names; the headers are C++20.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cmake (>= 3.25), g++ (>= 12) | clang (>= 14), pkg-config")
include(CPack)
