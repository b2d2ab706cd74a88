enable_language(RC)
target_sources(tarnwell PRIVATE ${CMAKE_CURRENT_LIST_DIR}/tarnwell.def)
set_target_properties(tarnwell PROPERTIES PREFIX "")
