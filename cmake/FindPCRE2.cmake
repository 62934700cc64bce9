# Finds the 8-bit library of PCRE2 and gives the target PCRE2::8BIT. The package that this project
# installs carries this file too: a static build needs it at the user's.
find_path(PCRE2_INCLUDE_DIR NAMES pcre2.h DOC "Folder of pcre2.h")
find_library(PCRE2_8BIT_LIBRARY NAMES pcre2-8 DOC "The 8-bit library of PCRE2")
mark_as_advanced(PCRE2_INCLUDE_DIR PCRE2_8BIT_LIBRARY)

set(PCRE2_VERSION "")
if(PCRE2_INCLUDE_DIR)
  file(STRINGS "${PCRE2_INCLUDE_DIR}/pcre2.h" _pcre2_lines REGEX "^#define PCRE2_(MAJOR|MINOR) ")
  list(TRANSFORM _pcre2_lines REPLACE "^#define PCRE2_[A-Z]+ +([0-9]+).*" "\\1")
  list(JOIN _pcre2_lines "." PCRE2_VERSION)
  unset(_pcre2_lines)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(PCRE2
  REQUIRED_VARS PCRE2_8BIT_LIBRARY PCRE2_INCLUDE_DIR
  VERSION_VAR PCRE2_VERSION)

if(PCRE2_FOUND AND NOT TARGET PCRE2::8BIT)
  add_library(PCRE2::8BIT UNKNOWN IMPORTED)
  set_target_properties(PCRE2::8BIT PROPERTIES
    IMPORTED_LOCATION "${PCRE2_8BIT_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${PCRE2_INCLUDE_DIR}")
endif()
