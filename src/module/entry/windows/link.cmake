# Four plain names are visible from outside, and the file is called what hosts look for. The
# resources come with the platform layer.
target_sources(tarnwell PRIVATE ${CMAKE_CURRENT_LIST_DIR}/tarnwell.def)
set_target_properties(tarnwell PROPERTIES PREFIX "")
# The symbols of what is packed without them, for debuggers.
set(symbols ${PROJECT_BINARY_DIR}/symbols/tarnwell.dll.debug)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/symbols)
add_custom_command(TARGET tarnwell POST_BUILD
                   COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:tarnwell> ${symbols})
set(TARNWELL_SYMBOLS ${symbols} PARENT_SCOPE)
