# Installs the built library into a fresh prefix, builds and runs a small
# program against the installed package, and checks that the installed
# library exports no symbol of an internal class (the platform layer's,
# whose names carry the toolkit's prefixes, among them).
#
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... [-DCXX_COMPILER=...]
#         [-DCOMPILER_LAUNCHER=...] [-DSANITIZE=ON] -P CheckInstall.cmake

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed:\n${output}")
  endif()
  set(run_output "${output}" PARENT_SCOPE)
endfunction()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
run("Installing" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

set(options -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release)
if(CXX_COMPILER)
  list(APPEND options -DCMAKE_CXX_COMPILER=${CXX_COMPILER})
endif()
if(COMPILER_LAUNCHER)
  list(APPEND options -DCMAKE_CXX_COMPILER_LAUNCHER=${COMPILER_LAUNCHER})
endif()
if(SANITIZE)
  list(APPEND options "-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined"
    "-DCMAKE_EXE_LINKER_FLAGS=-fsanitize=address,undefined")
endif()
run("Configuring the program" ${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/consumer
  -B ${WORK_DIR}/build ${options})
run("Building the program" ${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run("Running the program" ${WORK_DIR}/build/consumer)
if(NOT run_output STREQUAL "ok\n")
  message(FATAL_ERROR "The program printed:\n${run_output}")
endif()

file(GLOB_RECURSE library LIST_DIRECTORIES false ${prefix}/libquillon.so)
run("Listing the exported symbols" nm -D --defined-only -C ${library})
set(symbols "${run_output}")
if(NOT symbols MATCHES "PoBase::getClassTypeId")
  message(FATAL_ERROR "The library does not export its API:\n${symbols}")
endif()
# The internal classes are those whose headers stay in src/.
file(GLOB_RECURSE internal_headers ${SOURCE_DIR}/src/*.h)
string(REPLACE "\n" ";" symbols "${symbols}")
foreach(header IN LISTS internal_headers)
  get_filename_component(class ${header} NAME_WE)
  foreach(symbol IN LISTS symbols)
    if(symbol MATCHES "^[0-9a-f]+ [A-Za-z] ([a-zA-Z ]+ for )?${class}(::|<| |$)")
      list(APPEND exported "${symbol}")
    endif()
  endforeach()
endforeach()
if(exported)
  list(JOIN exported "\n" exported)
  message(FATAL_ERROR "The library exports symbols of internal classes:\n${exported}")
endif()
