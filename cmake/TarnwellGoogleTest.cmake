# GTest::gmock and GTest::gmock_main: the distribution's library, or for a cross build its sources.
if(CMAKE_CROSSCOMPILING)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  # As the tests themselves are.
  foreach(library gtest gmock gmock_main)
    target_compile_options(${library} PRIVATE -O0 -g0)
  endforeach()
else()
  find_package(GTest REQUIRED)
endif()
