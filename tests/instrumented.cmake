# How there are suites where the module and the host program are instrumented for sanitizers.
#
# Those that look at addresses and at undefined behaviour don't get the tests compiled again: each suite
# is linked of the objects that the plain build has made of it and of the instrumented layers, and what
# it loads and starts is instrumented. The thread sanitizer has to see what every thread does, so that its
# suites are compiled for it.

# The build by the preset TARNWELL_PLAIN, brought up to date with this one.
set(plain ${PROJECT_SOURCE_DIR}/build/${TARNWELL_PLAIN})
if(NOT EXISTS ${plain}/build.ninja)
  execute_process(COMMAND ${CMAKE_COMMAND} --preset ${TARNWELL_PLAIN}
                  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} COMMAND_ERROR_IS_FATAL ANY)
endif()
set(p4 ${plain}/bin/perforce/p4)
if(TARNWELL_SANITIZE MATCHES thread)
  # Its suites leave out what has one thread: what is read, written, compared and listed by whoever asks,
  # and the Mercurial and Subversion doubles of what Git's tests meet. What stays runs clients and servers,
  # or is asked by several threads, or helps those that are.
  set(one_thread
      unit/ascii unit/bufferedreader unit/commandline unit/datastreams unit/findrecord unit/formatting
      unit/ftpuri unit/githistoryparser unit/gitlog unit/gittreeparser unit/gituri unit/hgcommands
      unit/hghistoryparser unit/hgtreeparser unit/hostileaddresses unit/identifiers unit/itemnames
      unit/listingcost unit/longtext unit/messagelanguage unit/messagetable unit/mustexist unit/names
      unit/numbers unit/p4commands unit/p4marshal unit/p4parser unit/p4uri unit/p4values unit/paths
      unit/pattern unit/recordfeed unit/shorttext unit/slots unit/snapshotanswer unit/snapshotpaths
      unit/status unit/streampaths unit/svncommands unit/svnhistoryparser unit/svnparser
      unit/svntreeparser unit/svnuri unit/svnvalues unit/svnxml unit/text unit/usualparts
      module/hggenerated module/hghistory module/hgmodel module/hgnames module/hgtrees module/mercurial
      module/svnmodel module/posix/hgtrees)
  list(JOIN one_thread | one_thread)
  set(TARNWELL_LEFT_OUT "/tests/(${one_thread})\\.cpp$")
  add_custom_target(plain-build COMMAND ${CMAKE_COMMAND} --build ${plain} --target test-p4
                    BYPRODUCTS ${p4})
else()
  set(TARNWELL_PLAIN_SUITES ON)
  set(objects test-support unit-tests-objects platform-tests-objects module-tests-objects
      host-tests-objects e2e-tests-objects fault-tests-objects sdk-tests-objects)
  list(TRANSFORM objects REPLACE "(.+)" "${plain}/tests/lib\\1.a" OUTPUT_VARIABLE files)
  add_custom_target(plain-build COMMAND ${CMAKE_COMMAND} --build ${plain} --target ${objects} test-p4
                    BYPRODUCTS ${files} ${p4})
  foreach(object file IN ZIP_LISTS objects files)
    add_library(${object} STATIC IMPORTED)
    set_target_properties(${object} PROPERTIES IMPORTED_LOCATION ${file})
  endforeach()
  target_link_libraries(test-support INTERFACE GTest::gmock)
endif()

# The stand-in for a client is nobody's product, and it is started thousands of times.
set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/perforce/p4)
add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_COMMAND} -E copy ${p4} ${copy} DEPENDS ${p4})
add_custom_target(test-p4 DEPENDS ${copy})

# tarnwell_plain_suite(NAME TARGETS...): the suite over the targets. Of an inline function that the tests
# have as well the instrumented copy is taken, since it comes first.
function(tarnwell_plain_suite name)
  get_property(layers GLOBAL PROPERTY TARNWELL_LAYERS)
  if(NOT tarnwell-core IN_LIST ARGN)
    # The lowest layer, the host program, or nothing of the project.
    set(layers ${ARGN})
    list(REMOVE_ITEM layers tarnwell-client)
  endif()
  list(TRANSFORM layers REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>")
  # A program has to have some source.
  add_executable(${name} ${layers} CMakeLists.txt)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(${name} PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,${name}-objects>)
  add_dependencies(${name} plain-build test-p4)
endfunction()
