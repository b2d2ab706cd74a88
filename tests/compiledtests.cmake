# How there are suites whose tests another build has compiled: that of the preset TARNWELL_TESTS_OF, which
# is brought up to date with this one. They are compiled once for the plain build and for all
# sanitizers, fast and not for speed; what is tested is compiled by each. So a sanitizer doesn't look at
# the tests, but at the layers and at what a suite loads and starts.
#
# The thread sanitizer must see, too, what a test does that shares something among threads. Such tests
# are compiled for it, by the same compiler: two of them don't hand over all of GoogleTest's types alike.

set(tests ${PROJECT_SOURCE_DIR}/build/${TARNWELL_TESTS_OF})
# Also where presets have changed, which a build by itself takes no notice of.
if(${PROJECT_SOURCE_DIR}/CMakePresets.json IS_NEWER_THAN ${tests}/build.ninja)
  execute_process(COMMAND ${CMAKE_COMMAND} --preset ${TARNWELL_TESTS_OF}
                  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} COMMAND_ERROR_IS_FATAL ANY)
endif()
set(objects test-support)
foreach(suite platform unit module host e2e fault sdk)
  list(APPEND objects ${suite}-tests-single-objects ${suite}-tests-threaded-objects)
endforeach()
list(TRANSFORM objects REPLACE "(.+)" "${tests}/tests/lib\\1.a" OUTPUT_VARIABLE files)
set(p4 ${tests}/bin/perforce/p4)
add_custom_target(compiled-tests COMMAND ${CMAKE_COMMAND} --build ${tests} --target ${objects} test-p4
                  BYPRODUCTS ${files} ${p4})
foreach(object file IN ZIP_LISTS objects files)
  add_library(${object} STATIC IMPORTED GLOBAL)
  set_target_properties(${object} PROPERTIES IMPORTED_LOCATION ${file})
endforeach()
# Benchmarks use it, too.
target_include_directories(test-support INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(test-support INTERFACE GTest::gmock)
add_dependencies(test-support compiled-tests)

# The stand-in for a client is nobody's product, and it is started thousands of times.
set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/perforce/p4)
add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_COMMAND} -E copy ${p4} ${copy} DEPENDS ${p4})
add_custom_target(test-p4 DEPENDS ${copy})

# tarnwell_compiled_suite(NAME [THREADED SOURCES...] [LINKS TARGETS...]): the suite over the targets. THREADED
# are the sources that share something among threads. Of an inline function that the tests have as well
# the copy of this build is taken, since it comes first.
function(tarnwell_compiled_suite name)
  cmake_parse_arguments(PARSE_ARGV 1 suite "" "" "THREADED;LINKS")
  get_property(layers GLOBAL PROPERTY TARNWELL_LAYERS)
  if(NOT tarnwell-core IN_LIST suite_LINKS)
    # The lowest layer, the host program, or nothing of the project.
    set(layers ${suite_LINKS})
    list(REMOVE_ITEM layers tarnwell-client)
  endif()
  list(TRANSFORM layers REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>")
  set(kinds single threaded)
  if(TARNWELL_SANITIZE MATCHES thread)
    set(kinds single)
    list(APPEND layers ${suite_THREADED})
  endif()
  # A program has to have some source.
  add_executable(${name} ${layers} CMakeLists.txt)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
  foreach(kind IN LISTS kinds)
    target_link_libraries(${name} PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,${name}-${kind}-objects>)
  endforeach()
  add_dependencies(${name} compiled-tests test-p4)
endfunction()
