# Installation, in three components: `runtime`, what programs need; `development`, what compiling
# them needs besides, header, link, CMake package and pkg-config file; `tools`, the client.
include(CMakePackageConfigHelpers)

set(KURVO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Kurvo)

install(TARGETS kurvo kurvo_outline EXPORT KurvoTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT KurvoTargets NAMESPACE Kurvo:: DESTINATION ${KURVO_CMAKE_DIR} COMPONENT development)

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/KurvoConfig.cmake.in
  ${PROJECT_BINARY_DIR}/KurvoConfig.cmake
  INSTALL_DESTINATION ${KURVO_CMAKE_DIR}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KurvoConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KurvoConfig.cmake ${PROJECT_BINARY_DIR}/KurvoConfigVersion.cmake
  DESTINATION ${KURVO_CMAKE_DIR} COMPONENT development)

# The .pc file finds its prefix from where it lies, so that `cmake --install --prefix` and a moved
# tree work.
set(KURVO_PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
  set(KURVO_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
  set(KURVO_PC_LIBDIR ${CMAKE_INSTALL_FULL_LIBDIR})
  set(KURVO_PC_INCLUDEDIR ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
  file(RELATIVE_PATH prefix_from_pc /prefix/${KURVO_PC_DIR} /prefix)
  string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
  set(KURVO_PC_PREFIX "\${pcfiledir}/${prefix_from_pc}")
  set(KURVO_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(KURVO_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
foreach(name IN ITEMS kurvo kurvo-outline)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc
    DESTINATION ${KURVO_PC_DIR} COMPONENT development)
endforeach()
