# The public headers, relative to include/: the umbrella header Quillon.h
# and every header it includes.  Each header under include/Quillon must be
# one of them; internal headers live beside their sources in src/.
function(quillon_public_headers result)
  set(include_dir ${PROJECT_SOURCE_DIR}/include)
  file(STRINGS ${include_dir}/Quillon/Quillon.h lines REGEX "^#include <Quillon/")
  set(headers Quillon/Quillon.h)
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^#include <([^>]+)>.*$" "\\1" header "${line}")
    list(APPEND headers ${header})
  endforeach()
  file(GLOB_RECURSE present RELATIVE ${include_dir} CONFIGURE_DEPENDS ${include_dir}/Quillon/*.h)
  set(unlisted ${present})
  list(REMOVE_ITEM unlisted ${headers})
  set(missing ${headers})
  list(REMOVE_ITEM missing ${present})
  if(unlisted OR missing)
    message(FATAL_ERROR "include/Quillon/Quillon.h must include every header of include/Quillon "
      "and nothing else; not included: ${unlisted}; not found: ${missing}")
  endif()
  set(${result} ${headers} PARENT_SCOPE)
endfunction()
