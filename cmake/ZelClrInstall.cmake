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

if(WIN32)
  # Windows looks for libraries beside the program; Little CMS is one that is found there or not.
  if(ZELCLR_LCMS2_DLL)
    install(FILES "${ZELCLR_LCMS2_DLL}" DESTINATION "${CMAKE_INSTALL_BINDIR}")
  endif()
  # Of the libraries that are within ours and the tool.
  install(DIRECTORY "${CMAKE_SOURCE_DIR}/build/windows-libraries/share/licences" DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    OPTIONAL PATTERN benchmark.txt EXCLUDE PATTERN googletest.txt EXCLUDE)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_NAME zelclr)
  set(CPACK_PACKAGE_FILE_NAME "zelclr-${PROJECT_VERSION}-windows-x64")
  set(CPACK_STRIP_FILES ON)
  set(CPACK_VERBATIM_VARIABLES ON)
  include(CPack)
endif()
