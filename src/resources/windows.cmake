# The Windows resources, linked into every program or library that the platform layer ends up in:
# the module itself, and a test that holds the module's inside.
enable_language(RC)
find_program(TARNWELL_WIDL NAMES x86_64-w64-mingw32-widl widl REQUIRED)

set(library ${CMAKE_CURRENT_BINARY_DIR}/tarnwell.tlb)
# For who installs it.
set(TARNWELL_TYPE_LIBRARY ${library} PARENT_SCOPE)
add_custom_command(
  OUTPUT ${library}
  COMMAND ${TARNWELL_WIDL} -t -o ${library} ${CMAKE_CURRENT_LIST_DIR}/tarnwell.idl
  DEPENDS ${CMAKE_CURRENT_LIST_DIR}/tarnwell.idl
  VERBATIM)

set(script ${CMAKE_CURRENT_LIST_DIR}/tarnwell.rc)
add_library(tarnwell-resources OBJECT ${script})
target_include_directories(tarnwell-resources PRIVATE ${PROJECT_SOURCE_DIR}/src
                           ${CMAKE_CURRENT_BINARY_DIR})
# The resource compiler reports no dependencies of its own.
set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS
                            "${library};${CMAKE_CURRENT_LIST_DIR}/messages.inc")
# As objects, since nothing would pull them from an archive.
target_link_libraries(tarnwell-platform INTERFACE $<TARGET_OBJECTS:tarnwell-resources>)
add_dependencies(tarnwell-platform tarnwell-resources)
