# Installs the library with what finds it: the CMake package QzXml and the pkg-config file qzxml.
# Nothing that is installed holds an absolute path, so a prefix can be moved as a whole.
include(CMakePackageConfigHelpers)

install(TARGETS qzxml EXPORT QzXmlTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
qzxml_public_headers(_qzxml_headers)
foreach(_qzxml_header IN LISTS _qzxml_headers)
  get_filename_component(_qzxml_folder ${_qzxml_header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${_qzxml_header}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${_qzxml_folder})
endforeach()

set(_qzxml_package ${CMAKE_INSTALL_LIBDIR}/cmake/QzXml)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/QzXmlConfig.cmake.in ${PROJECT_BINARY_DIR}/QzXmlConfig.cmake
  INSTALL_DESTINATION ${_qzxml_package}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QzXmlConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/QzXmlConfig.cmake
  ${PROJECT_BINARY_DIR}/QzXmlConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/QzXmlGenerate.cmake
  DESTINATION ${_qzxml_package})
if(NOT BUILD_SHARED_LIBS)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/FindPCRE2.cmake DESTINATION ${_qzxml_package})
endif()
install(EXPORT QzXmlTargets NAMESPACE QzXml:: DESTINATION ${_qzxml_package})

# The definitions that the CMake target hands on, for users of pkg-config.
get_target_property(_qzxml_definitions qzxml INTERFACE_COMPILE_DEFINITIONS)
set(QZXML_PC_DEFINITIONS "")
if(_qzxml_definitions)
  list(TRANSFORM _qzxml_definitions PREPEND " -D")
  list(JOIN _qzxml_definitions "" QZXML_PC_DEFINITIONS)
endif()
foreach(_qzxml_folder LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${_qzxml_folder}}")
    set(QZXML_PC_${_qzxml_folder} "${CMAKE_INSTALL_${_qzxml_folder}}")
  else()
    set(QZXML_PC_${_qzxml_folder} "\${prefix}/${CMAKE_INSTALL_${_qzxml_folder}}")
  endif()
endforeach()
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(QZXML_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH _qzxml_up /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  string(REGEX REPLACE "/$" "" _qzxml_up "${_qzxml_up}")
  set(QZXML_PC_PREFIX "\${pcfiledir}/${_qzxml_up}")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/qzxml.pc.in ${PROJECT_BINARY_DIR}/qzxml.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qzxml.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
