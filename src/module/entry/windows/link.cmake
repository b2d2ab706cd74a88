# Four plain names are visible from outside, and the file is called what hosts look for. The
# resources come with the platform layer.
target_sources(tarnwell PRIVATE ${CMAKE_CURRENT_LIST_DIR}/tarnwell.def)
set_target_properties(tarnwell PROPERTIES PREFIX "")
