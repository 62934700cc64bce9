# qzxml_generate(TARGET <target> SCHEMAS <schema>...
#                [NAMESPACE <name>]    C++ namespace for the target namespace of the schemas
#                [MAP <uri=name>...]   C++ namespaces for others
#                [CATALOGS <file>...]  XML catalogs that say where imported schemas are
#                [OUTPUT <folder>]     where the sources go; <target>_<namespace> in the binary folder
#                [PARTS <number>])     how many sources, where the program is built in this project
#
# Makes C++ classes of XML schemas and adds them to a target of this folder, which includes them as
# "<namespace>/<namespace>.h". A target that is no program hands the include folder on. Schemas of one
# C++ namespace go into one call; each call has a folder of its own.
#
# With an installed program the classes are made when CMake configures, and a change of a schema, or
# of a file that it includes or imports, makes it configure again; files whose text stays the same are
# not written, so only what changed is compiled. Where the program is itself built in this project,
# they are made by the build, before the target is compiled; as their number is not known to CMake
# then, the definitions go to PARTS sources (1 unless said).

include_guard(GLOBAL)

function(qzxml_generate)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;NAMESPACE;OUTPUT;PARTS" "SCHEMAS;MAP;CATALOGS")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "qzxml_generate: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(arg_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "qzxml_generate: nothing stands behind ${arg_KEYWORDS_MISSING_VALUES}")
  endif()
  if(NOT arg_TARGET OR NOT arg_SCHEMAS)
    message(FATAL_ERROR "qzxml_generate: TARGET and SCHEMAS are needed")
  endif()
  if(NOT TARGET ${arg_TARGET})
    message(FATAL_ERROR "qzxml_generate: there is no target ${arg_TARGET}")
  endif()
  get_target_property(type ${arg_TARGET} TYPE)
  get_target_property(aliased ${arg_TARGET} ALIASED_TARGET)
  if(aliased OR NOT type MATCHES "^(EXECUTABLE|(STATIC|SHARED|MODULE|OBJECT)_LIBRARY)$")
    message(FATAL_ERROR "qzxml_generate: ${arg_TARGET} is no program or library that is compiled")
  endif()
  if(arg_PARTS AND NOT arg_PARTS MATCHES "^[1-9][0-9]*$")
    message(FATAL_ERROR "qzxml_generate: PARTS ${arg_PARTS} is no number")
  endif()
  if(NOT TARGET QzXml::qzxml_program)
    message(FATAL_ERROR "qzxml_generate: this build of QzXml has no program qzxml; it is built with "
                        "QZXML_BUILD_TOOLS, where CLI11 is")
  endif()

  _qzxml_generate_arguments()
  get_property(outputs GLOBAL PROPERTY QZXML_GENERATE_OUTPUTS)
  if(output IN_LIST outputs)
    message(FATAL_ERROR "qzxml_generate: another call writes into ${output}. Name all schemas of a "
                        "namespace in one call, or another folder with OUTPUT.")
  endif()
  set_property(GLOBAL APPEND PROPERTY QZXML_GENERATE_OUTPUTS ${output})
  get_target_property(is_imported QzXml::qzxml_program IMPORTED)
  if(is_imported)
    _qzxml_generate_now()
  else()
    _qzxml_generate_by_build()
  endif()

  if(type STREQUAL "EXECUTABLE")
    target_include_directories(${arg_TARGET} PRIVATE ${output})
  else()
    target_include_directories(${arg_TARGET} PUBLIC $<BUILD_INTERFACE:${output}>)
  endif()
endfunction()

# Sets output, schemas, catalogs (whole paths) and arguments in the caller.
macro(_qzxml_generate_arguments)
  set(output ${arg_OUTPUT})
  if(NOT output)
    string(REPLACE "::" "_" output "${arg_TARGET}_${arg_NAMESPACE}")
    if(NOT arg_NAMESPACE)
      list(GET arg_SCHEMAS 0 schema)
      get_filename_component(schema ${schema} NAME_WE)
      set(output ${arg_TARGET}_${schema})
    endif()
  endif()
  get_filename_component(output ${output} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_BINARY_DIR})
  set(schemas "")
  foreach(schema IN LISTS arg_SCHEMAS)
    get_filename_component(schema ${schema} ABSOLUTE)
    list(APPEND schemas ${schema})
  endforeach()
  set(catalogs "")
  foreach(catalog IN LISTS arg_CATALOGS)
    get_filename_component(catalog ${catalog} ABSOLUTE)
    list(APPEND catalogs ${catalog})
  endforeach()
  set(depfile ${output}/qzxml-files.d)
  set(arguments generate ${schemas} --output ${output} --depfile ${depfile})
  if(arg_NAMESPACE)
    list(APPEND arguments --namespace ${arg_NAMESPACE})
  endif()
  foreach(map IN LISTS arg_MAP)
    list(APPEND arguments --map ${map})
  endforeach()
  foreach(catalog IN LISTS catalogs)
    list(APPEND arguments --catalog ${catalog})
  endforeach()
endmacro()

macro(_qzxml_generate_now)
  get_target_property(program QzXml::qzxml_program LOCATION)
  # Also when it fails, so that mending a schema is enough to configure again. The list of files is
  # one of them, so that what is removed comes back.
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${schemas} ${catalogs} ${program} ${output}/qzxml-files.txt)
  execute_process(COMMAND ${program} ${arguments}
    RESULT_VARIABLE result OUTPUT_VARIABLE messages ERROR_VARIABLE messages)
  string(STRIP "${messages}" messages)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "qzxml_generate: no classes for ${arg_TARGET} (${result}):\n${messages}")
  elseif(messages)
    message(STATUS "qzxml_generate for ${arg_TARGET}:\n${messages}")
  endif()
  _qzxml_read_depfile(${depfile} inputs)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${inputs})
  file(STRINGS ${output}/qzxml-files.txt files)
  list(TRANSFORM files PREPEND ${output}/)
  target_sources(${arg_TARGET} PRIVATE ${files})
endmacro()

macro(_qzxml_generate_by_build)
  if(NOT arg_PARTS)
    set(arg_PARTS 1)
  endif()
  get_filename_component(name ${output} NAME)
  string(MAKE_C_IDENTIFIER ${name} name)
  set(sources "")
  foreach(part RANGE 1 ${arg_PARTS})
    list(APPEND sources ${output}/${name}_${part}.cpp)
  endforeach()
  # The sources keep their times when their texts stay; the list of files is always written anew.
  add_custom_command(OUTPUT ${output}/qzxml-files.txt BYPRODUCTS ${sources}
    COMMAND QzXml::qzxml_program ${arguments} --parts ${arg_PARTS} --part-name ${name}
    DEPENDS ${schemas} ${catalogs} QzXml::qzxml_program
    DEPFILE ${depfile}
    COMMENT "Making classes of ${arg_SCHEMAS}"
    VERBATIM)
  target_sources(${arg_TARGET} PRIVATE ${sources} ${output}/qzxml-files.txt)
endmacro()

# The files that a rule of make names behind its colon.
function(_qzxml_read_depfile depfile result)
  file(READ ${depfile} text)
  string(REGEX REPLACE "^[^\n]*:" "" text "${text}")
  string(REPLACE "\\\n" "\n" text "${text}")
  string(REPLACE "$$" "$" text "${text}")
  string(REGEX REPLACE "\\\\([ #\\\\])" "\\1" text "${text}")
  string(REGEX MATCHALL "[^\n]+" lines "${text}")
  list(TRANSFORM lines STRIP)
  list(FILTER lines EXCLUDE REGEX "^$")
  set(${result} ${lines} PARENT_SCOPE)
endfunction()
