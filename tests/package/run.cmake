# Installs the build into a folder of its own, builds the README's programs against that, the first
# in both ways, and runs them.
cmake_policy(VERSION 3.25)
file(REMOVE_RECURSE ${WORK_DIR})
set(source_dir ${CMAKE_CURRENT_LIST_DIR})

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(READ ${source_dir}/../../README.md readme)
foreach(name main facade)
  file(READ ${source_dir}/${name}.cpp program)
  string(FIND "${readme}" "${program}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "README.md shows another program than tests/package/${name}.cpp")
  endif()
endforeach()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/first)
# An installation has to work from wherever it is moved to.
file(RENAME ${WORK_DIR}/first ${WORK_DIR}/prefix)

# Whatever an installed header includes is installed too.
set(include ${WORK_DIR}/prefix/include)
file(GLOB_RECURSE headers RELATIVE ${include} ${include}/*.h)
foreach(header IN LISTS headers)
  file(STRINGS ${include}/${header} lines REGEX "^#include \"")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^#include \"(.*)\".*" "\\1" included "${line}")
    if(NOT EXISTS ${include}/${included})
      message(SEND_ERROR "${header} includes ${included}, which cmake/install.cmake doesn't name")
    endif()
  endforeach()
endforeach()

set(ENV{PKG_CONFIG_PATH} ${WORK_DIR}/prefix/${LIBDIR}/pkgconfig)
run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${source_dir} -B ${WORK_DIR}/build
  -D CMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS}"
  -D CMAKE_PREFIX_PATH=${WORK_DIR}/prefix)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
foreach(program through_cmake through_pkg_config)
  execute_process(COMMAND ${WORK_DIR}/build/${program} WORKING_DIRECTORY ${WORK_DIR}
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  if(NOT output STREQUAL "IFCWALL #1: Garden wall, 2½ m high\n")
    message(FATAL_ERROR "${program} printed: ${output}")
  endif()
endforeach()

# A program against the facade sees nothing of what is behind it.
execute_process(COMMAND ${COMPILER} -std=c++20 -M -I ${WORK_DIR}/prefix/include
  ${source_dir}/facade.cpp OUTPUT_VARIABLE included COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "include/ovik/[^ \n]+" included "${included}")
list(FILTER included EXCLUDE REGEX "ovik/api[./]|ovik/base/(export|progressmeter).h|ovik/imp/(schemaid|readoptions|loadreport|savereport).h")
if(included)
  message(FATAL_ERROR "The facade includes ${included}")
endif()
# Nor does the compiler: a fraction of a second is enough for it, with room for a slow machine.
execute_process(COMMAND ${COMPILER} -std=c++20 -fsyntax-only -I ${WORK_DIR}/prefix/include
  ${source_dir}/facade.cpp TIMEOUT 10 COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${WORK_DIR}/build/facade WORKING_DIRECTORY ${WORK_DIR}
  COMMAND_ERROR_IS_FATAL ANY)
file(READ ${WORK_DIR}/changed.ifc changed)
if(NOT changed MATCHES "'Garden wall','2[^']+ m high'")
  message(FATAL_ERROR "facade wrote: ${changed}")
endif()

if(EXISTS ${WORK_DIR}/prefix/bin/ovik)
  run(${WORK_DIR}/prefix/bin/ovik info ${WORK_DIR}/wall.ifc)
endif()
