# What `cmake --install` puts where, and how other projects find it there: find_package(tarnwell)
# with the target tarnwell::tarnwell, or pkg-config tarnwell. Each file belongs to the component
# that is packed with it: runtime, development, host, symbols (Windows).
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/tarnwell)

install(DIRECTORY include/tarnwell TYPE INCLUDE COMPONENT development)
if(WIN32)
  # Headers only. Every module of this kind exports the same four names, so that a program that
  # linked them might end up with somebody else's: the module is loaded by path.
  add_library(tarnwell-sdk INTERFACE)
  set_target_properties(tarnwell-sdk PROPERTIES EXPORT_NAME tarnwell)
  target_include_directories(tarnwell-sdk INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  install(TARGETS tarnwell-sdk EXPORT tarnwell-targets)
  install(TARGETS tarnwell RUNTIME COMPONENT runtime ARCHIVE EXCLUDE_FROM_ALL)
  install(FILES ${TARNWELL_SYMBOLS} DESTINATION symbols COMPONENT symbols)
  install(FILES ${TARNWELL_TYPE_LIBRARY} src/resources/tarnwell.idl DESTINATION share/tarnwell
          COMPONENT development)
  set(manifest ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/tarnwell.manifest)
  configure_file(cmake/tarnwell.manifest.in ${manifest} @ONLY)
  install(FILES ${manifest} DESTINATION ${CMAKE_INSTALL_BINDIR}
          COMPONENT runtime)
else()
  install(TARGETS tarnwell EXPORT tarnwell-targets
          LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
endif()
install(EXPORT tarnwell-targets NAMESPACE tarnwell:: FILE tarnwellConfig.cmake
        DESTINATION ${package} COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tarnwellConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tarnwellConfigVersion.cmake DESTINATION ${package}
        COMPONENT development)
if(TARGET tarnwell-host)
  install(TARGETS tarnwell-host COMPONENT host)
  if(TARNWELL_HOST_TOLD)
    install(FILES ${TARNWELL_HOST_TOLD}/en/tarnwell-host.1.gz
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT host)
    install(FILES ${TARNWELL_HOST_TOLD}/ja/tarnwell-host.1.gz
            DESTINATION ${CMAKE_INSTALL_MANDIR}/ja/man1 COMPONENT host)
    install(FILES ${TARNWELL_HOST_TOLD}/tarnwell-host
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT host)
  endif()
endif()

# Where Debian's Python looks for modules, with what announces the file systems to fsspec.
if(NOT WIN32)
  file(READ python/pyproject.toml settings)
  string(REGEX MATCH "fsspec.specs\"\\]\n([^[]*)\n\n" found "${settings}")
  string(REPLACE "\"" "" announced "${CMAKE_MATCH_1}")
  set(facts ${PROJECT_BINARY_DIR}/tarnwell-${PROJECT_VERSION}.dist-info)
  file(WRITE ${facts}/entry_points.txt "[fsspec.specs]\n${announced}\n")
  file(WRITE ${facts}/METADATA
       "Metadata-Version: 2.1\nName: tarnwell\nVersion: ${PROJECT_VERSION}\n")
  install(DIRECTORY ${facts} DESTINATION lib/python3/dist-packages COMPONENT python)
  install(DIRECTORY python/tarnwell DESTINATION lib/python3/dist-packages COMPONENT python
          FILES_MATCHING PATTERN "*.py" PATTERN "py.typed")
endif()

# For pkg-config. All folders are named from where its file stands, so that the tree may be moved.
if(NOT WIN32)
  set(folder /${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH TARNWELL_PREFIX ${folder} /)
  configure_file(cmake/tarnwell.pc.in tarnwell.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/tarnwell.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
          COMPONENT development)
endif()
