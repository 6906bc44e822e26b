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

# The headers of the interface, beside the generated ones of the schemas: what ovik.h, api.h,
# parser.h and the class headers need, and nothing else. The package test fails if one of them
# includes another that is not named here.
set(ovik_public_headers
  api.h ovik.h parser.h
  api/desc.h api/handle.h api/model.h api/values.h
  base/errlog.h base/export.h base/fastheap.h base/progressmeter.h
  imp/base64guid.h imp/entityid.h imp/ifcentity.h imp/ifcheader.h imp/ifcmodel.h imp/infiler.h
  imp/loadcontext.h imp/loadreport.h imp/logical.h imp/outfiler.h imp/readoptions.h imp/result.h
  imp/rtclass.h imp/savereport.h imp/schemaid.h imp/utf8.h imp/validation.h imp/variant.h
  imp/xbinary.h imp/xstring.h
  parser/fileoutput.h parser/flexlexer.h parser/items.h parser/location.h parser/output.h
  parser/parsedstream.h parser/parser.h parser/scanner.h
  schema/common/aggregate.h schema/common/engine.h schema/common/entity.h
  schema/common/enumeration.h schema/common/namehash.h schema/common/select.h
  schema/common/types.h schema/common/wideselect.h
  spatial/ifcspatialstructure.h)
foreach(header IN LISTS ovik_public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/ovik/${header}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ovik/${folder})
endforeach()
install(DIRECTORY ${PROJECT_BINARY_DIR}/generated/ovik DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" REGEX "/ovik/schema/" EXCLUDE)

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
