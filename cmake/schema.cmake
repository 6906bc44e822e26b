# ovik_add_schema(TARGET TABLE FOLDER SHARDS)
# Makes the classes of the schema in TABLE, a file called after the schema, and adds them to TARGET:
# sources to FOLDER, headers below it. A fixed number of SHARDS keeps the build of the classes
# parallel, with no source that takes long by itself. The schema is known from where its row,
# declared in FOLDER/ovik/schema/<schema>/imp.h, is entered in the table of schemas.
function(ovik_add_schema target table folder shards)
  cmake_path(ABSOLUTE_PATH table BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
  cmake_path(GET table STEM schema)
  set(sources ${folder}/${schema}_schema.cpp ${folder}/${schema}_api.cpp)
  math(EXPR last "${shards} - 1")
  foreach(shard RANGE ${last})
    list(APPEND sources ${folder}/${schema}_${shard}.cpp)
  endforeach()
  add_custom_command(
    OUTPUT ${sources}
    COMMAND ovik-schema-generator ${table} ${folder} ${shards}
    DEPENDS ovik-schema-generator ${table}
    COMMENT "Making the ${schema} classes"
    VERBATIM)
  target_sources(${target} PRIVATE ${sources})
  # Whoever includes a class header waits for this target.
  add_custom_target(${target}_${schema}_classes DEPENDS ${sources})
  add_dependencies(${target} ${target}_${schema}_classes)
endfunction()
