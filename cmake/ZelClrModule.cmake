# zelclr_module(SOURCES ... HEADERS ...): adds the sources and the public headers of one folder of zelclr/ to the
# library. Paths are relative to the folder that calls it.
function(zelclr_module)
  cmake_parse_arguments(MODULE "" "" "SOURCES;HEADERS" ${ARGN})
  target_sources(ZelClr PRIVATE ${MODULE_SOURCES})
  target_sources(ZelClr PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${MODULE_HEADERS})
endfunction()

# zelclr_precompile(target headers...): for C++, where ZELCLR_PRECOMPILE asks for it: these and what everything includes.
function(zelclr_precompile target)
  if(ZELCLR_PRECOMPILE)
    set(headers algorithm array cmath cstdint map memory optional span string string_view vector ${ARGN})
    list(TRANSFORM headers REPLACE "(.+)" "$<$<COMPILE_LANGUAGE:CXX>:<\\1$<ANGLE-R>>")
    target_precompile_headers(${target} PRIVATE ${headers})
    target_compile_options(${target} PRIVATE # so that ccache knows them again
      $<$<COMPILE_LANG_AND_ID:CXX,Clang>:SHELL:-Xclang -fno-pch-timestamp>)
  endif()
endfunction()
