# Unpacks the archives of the corpora that QZXML_CORPORA names into OUTPUT, where there are any.
set(archive "$ENV{QZXML_CORPORA}/xmlconf/files.tar.xz")
if(NOT "$ENV{QZXML_CORPORA}" STREQUAL "" AND EXISTS "${archive}")
  file(REMOVE_RECURSE ${OUTPUT})
  file(ARCHIVE_EXTRACT INPUT ${archive} DESTINATION ${OUTPUT})
endif()
