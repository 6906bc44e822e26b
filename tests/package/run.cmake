# Installs the build into a folder of its own, builds the README's program against that in both
# ways, and runs it.
cmake_policy(VERSION 3.25)
file(REMOVE_RECURSE ${WORK_DIR})
set(source_dir ${CMAKE_CURRENT_LIST_DIR})

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(READ ${source_dir}/main.cpp program)
file(READ ${source_dir}/../../README.md readme)
string(FIND "${readme}" "${program}" place)
if(place EQUAL -1)
  message(FATAL_ERROR "README.md shows another program than tests/package/main.cpp")
endif()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/first)
# An installation has to work from wherever it is moved to.
file(RENAME ${WORK_DIR}/first ${WORK_DIR}/prefix)
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
if(EXISTS ${WORK_DIR}/prefix/bin/ovik)
  run(${WORK_DIR}/prefix/bin/ovik info ${WORK_DIR}/wall.ifc)
endif()
