# Only the names of the map are visible from outside; the library binds to its own copies, and
# stays loaded once it is (DllCanUnloadNow says so too).
set(map ${CMAKE_CURRENT_LIST_DIR}/exports.map)
target_link_options(tarnwell PRIVATE -Wl,--version-script=${map} -Wl,-Bsymbolic -Wl,-z,nodelete
                    -Wl,-z,relro -Wl,-z,now)
set_target_properties(tarnwell PROPERTIES LINK_DEPENDS ${map} VERSION ${PROJECT_VERSION}
                      SOVERSION ${PROJECT_VERSION_MAJOR})
