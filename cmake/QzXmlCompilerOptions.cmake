# What every target of this project is compiled with; nothing of it reaches the users of the library.
set(QZXML_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-qual -Wformat=2 -Wundef -Wconversion -Wsign-conversion)

# Sanitizers to compile and link with, e.g. "address;undefined" or "thread".
set(QZXML_SANITIZE "" CACHE STRING "Sanitizers of a development build, separated by semicolons")
if(QZXML_SANITIZE)
  string(REPLACE ";" "," _qzxml_sanitizers "${QZXML_SANITIZE}")
  add_compile_options(-fsanitize=${_qzxml_sanitizers} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${_qzxml_sanitizers})
endif()

# Compiles a target of this project with its warnings.
function(qzxml_compile_options target)
  target_compile_options(${target} PRIVATE ${QZXML_WARNINGS})
endfunction()

# Targets whose sources are compiled together. That takes less than half the time, as their headers
# are read once; yet a source that lacks an include may pass, and each change compiles a folder.
set(QZXML_JOIN_SOURCES "" CACHE STRING "Targets to compile folder by folder, separated by semicolons")

# qzxml_join_sources(<target> [ALONE <source>...]): makes one source of those of each folder, where
# the target is one of QZXML_JOIN_SOURCES. ALONE are those that give a name of their own to something
# else than another source of their folder, as paths from this folder.
function(qzxml_join_sources target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "ALONE")
  if(NOT target IN_LIST QZXML_JOIN_SOURCES)
    return()
  endif()
  list(TRANSFORM arg_ALONE PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    get_filename_component(source ${source} ABSOLUTE)
    get_filename_component(folder ${source} DIRECTORY)
    if(NOT source IN_LIST arg_ALONE)
      string(MAKE_C_IDENTIFIER ${folder} folder)
      set_property(SOURCE ${source} PROPERTY UNITY_GROUP ${folder})
    endif()
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
