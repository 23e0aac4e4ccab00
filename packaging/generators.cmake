# The Debian package holds what `cmake --install` puts into a system, below /usr.
if(CPACK_GENERATOR STREQUAL "DEB")
  list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
  set(CPACK_INSTALL_CMAKE_PROJECTS "${build};tvmlfilter;Unspecified;/")
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()
