# zelclr_module(SOURCES ... HEADERS ...): adds the sources and the public headers of one folder of zelclr/ to the
# library. Paths are relative to the folder that calls it.
function(zelclr_module)
  cmake_parse_arguments(MODULE "" "" "SOURCES;HEADERS" ${ARGN})
  target_sources(ZelClr PRIVATE ${MODULE_SOURCES})
  target_sources(ZelClr PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${MODULE_HEADERS})
endfunction()
