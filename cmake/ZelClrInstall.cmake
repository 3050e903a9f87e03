# The installed tree and the package that find_package(ZelClr) reads; tests/consumer proves both.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/ZelClr")
install(TARGETS ZelClr EXPORT ZelClrTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT ZelClrTargets NAMESPACE ZelClr:: DESTINATION "${package_dir}")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/ZelClrConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/ZelClrConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ZelClrConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ZelClrConfig.cmake" "${PROJECT_BINARY_DIR}/ZelClrConfigVersion.cmake"
  DESTINATION "${package_dir}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/" DESTINATION "${CMAKE_INSTALL_DATADIR}/zelclr")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/README.md" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(TARGET zelclr-tool)
  install(TARGETS zelclr-tool RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
