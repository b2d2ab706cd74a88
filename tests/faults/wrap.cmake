# The operations that can be made to fail, from operations.inc, as link options. An operation that
# the platform's headers declare is there, or here among those that can't fail.
set(cannotFail
    GetLastError SetLastError CoTaskMemFree SysFreeString
    SysStringLen EnterCriticalSection LeaveCriticalSection DeleteCriticalSection
    FreeEnvironmentStringsW)

set(operations ${CMAKE_CURRENT_LIST_DIR}/operations.inc)
file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/platform/posix/win32/*.h)
list(APPEND headers ${PROJECT_SOURCE_DIR}/src/platform/clientgroup.h
                    ${PROJECT_SOURCE_DIR}/src/platform/icons.h
                    ${PROJECT_SOURCE_DIR}/src/platform/newfile.h
                    ${PROJECT_SOURCE_DIR}/src/platform/texts.h
                    ${PROJECT_SOURCE_DIR}/src/platform/username.h
                    ${PROJECT_SOURCE_DIR}/src/platform/xml.h
                    ${PROJECT_SOURCE_DIR}/include/tarnwell/com.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${operations} ${headers})

set(wrapped)
set(TARNWELL_WRAPPED)
file(STRINGS ${operations} rows REGEX "^FAULT\\(")
foreach(row IN LISTS rows)
  string(REGEX REPLACE "^FAULT\\(([A-Za-z_]+),.*" "\\1" name "${row}")
  list(APPEND wrapped ${name})
  list(APPEND TARNWELL_WRAPPED -Wl,--wrap=${name})
endforeach()

foreach(header IN LISTS headers)
  file(STRINGS ${header} declarations REGEX "^(    |extern \"C\" )[A-Za-z_:]+\\*? [A-Z_][A-Za-z]+\\(")
  foreach(declaration IN LISTS declarations)
    string(REGEX REPLACE "^(    |extern \"C\" )[A-Za-z_:]+\\*? ([A-Za-z_]+)\\(.*" "\\2" name
           "${declaration}")
    if(declaration MATCHES "^    explicit ") # a constructor
      continue()
    endif()
    if(NOT name IN_LIST wrapped AND NOT name IN_LIST cannotFail AND NOT name MATCHES "^Dll")
      message(FATAL_ERROR "No fault for ${name}: give it a row in ${operations}")
    endif()
  endforeach()
endforeach()
