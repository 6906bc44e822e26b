# Install rules: headers, library, tool, the CMake package Ovik and ovik.pc.
include(CMakePackageConfigHelpers)
set(ovik_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Ovik)

install(TARGETS ovik EXPORT OvikTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET ovik_tool)
  install(TARGETS ovik_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  # The installed tool finds the installed library wherever the two are put together.
  file(RELATIVE_PATH ovik_lib_from_bin
    ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(ovik_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${ovik_lib_from_bin}")
endif()

# What no header of the interface includes stays at home. The package test compiles all headers
# from the installation, so it fails if something needed is named here.
set(ovik_internal_headers
  api/access api/desctables
  base/ascii base/deepstack base/inputfile
  imp/hexdigit imp/ifcentitypool imp/modelimp imp/schematable imp/load/[a-z]+ imp/save/[a-z]+
  schema/common/aggregateengine schema/common/backrefs schema/common/orientededge schema/common/selectaccess
  schema/ifc[a-z0-9]+/imp schema/generator/[a-z]+)
list(JOIN ovik_internal_headers "|" ovik_internal_headers)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/ovik ${PROJECT_BINARY_DIR}/generated/ovik
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" REGEX "/ovik/(${ovik_internal_headers})\\.h$" EXCLUDE)

install(EXPORT OvikTargets NAMESPACE Ovik:: DESTINATION ${ovik_package_dir})
configure_package_config_file(cmake/OvikConfig.cmake.in ${PROJECT_BINARY_DIR}/OvikConfig.cmake
  INSTALL_DESTINATION ${ovik_package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OvikConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OvikConfig.cmake ${PROJECT_BINARY_DIR}/OvikConfigVersion.cmake
  DESTINATION ${ovik_package_dir})

# ovik.pc finds its prefix from its own place, so an installation can be moved.
set(ovik_pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ovik_prefix_from_pc
  ${CMAKE_INSTALL_PREFIX}/${ovik_pc_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" ovik_prefix_from_pc "${ovik_prefix_from_pc}")
set(ovik_pc_cflags "-I\${includedir}")
set(ovik_pc_libs "-L\${libdir} -lovik")
if(NOT BUILD_SHARED_LIBS)
  string(APPEND ovik_pc_cflags " -DOVIK_STATIC")
  string(APPEND ovik_pc_libs " -lstdc++")
endif()
configure_file(cmake/ovik.pc.in ${PROJECT_BINARY_DIR}/ovik.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ovik.pc DESTINATION ${ovik_pc_dir})
