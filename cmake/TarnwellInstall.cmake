# What `cmake --install` puts where, and how other projects find it there: find_package(tarnwell)
# with the target tarnwell::tarnwell, or pkg-config tarnwell.
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/tarnwell)

install(DIRECTORY include/tarnwell TYPE INCLUDE)
install(TARGETS tarnwell EXPORT tarnwell-targets)
install(EXPORT tarnwell-targets NAMESPACE tarnwell:: FILE tarnwellConfig.cmake
        DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tarnwellConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tarnwellConfigVersion.cmake DESTINATION ${package})
if(TARGET tarnwell-host)
  install(TARGETS tarnwell-host)
endif()

# For pkg-config. All folders are named from where its file stands, so that the tree may be moved.
if(NOT WIN32)
  set(folder /${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH TARNWELL_PREFIX ${folder} /)
  configure_file(cmake/tarnwell.pc.in tarnwell.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/tarnwell.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
