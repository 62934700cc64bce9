# The CMake function qzxml_generate of an installed package, as a script: two targets with one schema,
# blanks in paths, changed options, schemas that go, that are wrong and that come back, calls that are
# wrong. tests/package/CMakeLists.txt says with what.
cmake_minimum_required(VERSION 3.25)

set(configure ${CMAKE_COMMAND} -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
    -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_PREFIX_PATH=${PREFIX} -S ${SCRATCH}/source)
set(build ${SCRATCH}/the\ build)
set(made ${build}/first_forms)

# run(<command>...): runs it, and ends the test with what it says where it fails.
function(run)
  execute_process(COMMAND ${ARGV}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${result} from: ${ARGV}\n${output}")
  endif()
endfunction()

# fails(<expression> <command>...): the command fails and says so.
function(fails expression)
  execute_process(COMMAND ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
  if(result EQUAL 0 OR NOT output MATCHES "${expression}")
    message(FATAL_ERROR "This did not fail with ${expression}: ${ARGN}\n${output}")
  endif()
endfunction()

# has_folders(<name>...): below the folder of what was made stand these and no others.
function(has_folders)
  file(GLOB folders RELATIVE ${made} LIST_DIRECTORIES true ${made}/*)
  list(FILTER folders EXCLUDE REGEX "[.]")
  if(NOT folders STREQUAL ARGN)
    message(FATAL_ERROR "There are ${folders} instead of ${ARGN}")
  endif()
endfunction()

# sum(<variable>): of all files that were made, with their names.
function(sum variable)
  file(GLOB_RECURSE files ${made}/*)
  set(sums "")
  foreach(file IN LISTS files)
    file(SHA256 ${file} sum)
    list(APPEND sums ${file} ${sum})
  endforeach()
  set(${variable} "${sums}" PARENT_SCOPE)
endfunction()

# replace(<file> <from> <to>): in a copied source.
function(replace file from to)
  file(READ ${SCRATCH}/source/${file} text)
  string(REPLACE "${from}" "${to}" text "${text}")
  file(WRITE ${SCRATCH}/source/${file} "${text}")
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
file(COPY ${SOURCE}/ DESTINATION ${SCRATCH}/source)

# Two targets with one schema, built side by side.
run(${configure} -B ${build} -DMORE=price.xsd)
run(${CMAKE_COMMAND} --build ${build} --parallel 2)
run(${build}/first)
run(${build}/second)
has_folders(forms prices)

# What was made and is removed comes back.
file(REMOVE_RECURSE ${made})
run(${CMAKE_COMMAND} --build ${build} --parallel 2)

# A schema that is wrong fails as long as it is, and nothing is written.
sum(before)
set(item "the items/item.xsd")
replace(${item} "xs:int" "xs:number")
foreach(time first second)
  fails("item.xsd:.*number" ${CMAKE_COMMAND} --build ${build})
endforeach()
sum(after)
if(NOT before STREQUAL after)
  message(FATAL_ERROR "A schema that is wrong changed what was made:\n${before}\n${after}")
endif()
replace(${item} "xs:number" "xs:int")
run(${CMAKE_COMMAND} --build ${build} --parallel 2)
run(${build}/second)

# Another namespace, and a schema less: what is not made any more goes.
run(${configure} -B ${build} "-DOPTIONS=MAP\;urn:example:prices=costs")
has_folders(costs forms)
run(${configure} -B ${build} -DMORE= -DOPTIONS=)
has_folders(forms)
fails("prices/prices.h" ${CMAKE_COMMAND} --build ${build} --target first)

# Calls that are wrong.
foreach(case
    "folder-twice=another call writes into .*first_forms. Name all schemas of a namespace in one call"
    "no-value=nothing stands behind NAMESPACE"
    "no-schema=TARGET and SCHEMAS are needed"
    "unknown-option=unknown arguments: FOLDER.prices"
    "no-target=there is no target third"
    "custom-target=third is no program or library that is compiled"
    "alias=third is no program or library that is compiled"
    "interface=third is no program or library that is compiled"
    "parts=PARTS many is no number"
    "no-file=no classes for second .3.: .*missing.xsd: There is no such file"
    "namespace=no classes for second .2.: .*'two-words' is no C.. namespace")
  string(REGEX MATCH "^([^=]*)=(.*)$" ignored "${case}")
  fails("${CMAKE_MATCH_2}" ${configure} -B ${SCRATCH}/wrong -DCASE=${CMAKE_MATCH_1})
endforeach()
