# What all targets of the project have in common.

add_library(tarnwell-options INTERFACE)
target_compile_options(tarnwell-options INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(TARNWELL_WARNINGS_AS_ERRORS)
  target_compile_options(tarnwell-options INTERFACE -Werror)
endif()
if(TARNWELL_SANITIZE)
  target_compile_options(tarnwell-options INTERFACE -fsanitize=${TARNWELL_SANITIZE}
                         -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tarnwell-options INTERFACE -fsanitize=${TARNWELL_SANITIZE})
endif()
if(WIN32)
  # Text is held as char16_t and handed to the system as wchar_t: the same units, other types.
  target_compile_options(tarnwell-options INTERFACE -fno-strict-aliasing)
  target_compile_definitions(tarnwell-options INTERFACE UNICODE _UNICODE NOMINMAX
                             WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
  target_link_options(tarnwell-options INTERFACE -static)
endif()

# What makes a fault in what is shipped harder to use: checked stack frames and copies, jumps that
# only land where some are meant to, addresses that are fixed once the program is loaded. The
# sanitizers have their own ways. `tests/hardening/check` looks for all of it.
add_library(tarnwell-hardening INTERFACE)
if(NOT TARNWELL_SANITIZE)
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection=full TARNWELL_HAS_CF_PROTECTION)
  target_compile_options(tarnwell-hardening INTERFACE -fstack-protector-strong
                         $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
                         $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
  if(WIN32)
    # Of the compilers that build DLLs only some know the guard.
    check_cxx_compiler_flag(-mguard=cf TARNWELL_HAS_CONTROL_FLOW_GUARD)
    if(TARNWELL_HAS_CONTROL_FLOW_GUARD)
      target_compile_options(tarnwell-hardening INTERFACE -mguard=cf)
      target_link_options(tarnwell-hardening INTERFACE -mguard=cf)
    endif()
    target_link_options(tarnwell-hardening INTERFACE -fstack-protector-strong -Wl,--dynamicbase
                        -Wl,--nxcompat -Wl,--high-entropy-va)
  else()
    if(TARNWELL_HAS_CF_PROTECTION)
      target_compile_options(tarnwell-hardening INTERFACE -fcf-protection=full)
      # The C library's own few startup objects may lack the mark; they make no such jumps.
      target_link_options(tarnwell-hardening INTERFACE -Wl,-z,ibt -Wl,-z,shstk)
    endif()
    # A thread has its own variables from its start: made at their first use they would end the host
    # where memory is short.
    target_compile_options(tarnwell-hardening INTERFACE -ftls-model=initial-exec)
    target_link_options(tarnwell-hardening INTERFACE -Wl,-z,relro -Wl,-z,now
                        -Wl,-z,noexecstack $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
  endif()
endif()

# Most of a small source's time goes into its headers. `tarnwell_in_turn` is for targets whose
# sources have to be compiled one by one all the same.
set(CMAKE_UNITY_BUILD ${TARNWELL_UNITY})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
function(tarnwell_in_turn target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
endfunction()

# tarnwell_sources(VAR FOLDER...): the sources that lie directly in these folders.
function(tarnwell_sources variable)
  set(found)
  foreach(folder IN LISTS ARGN)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND found ${sources})
  endforeach()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# tarnwell_layer(NAME FOLDERS... LINKS TARGETS...): one layer of the module, made of the sources
# in its folders, on top of the layers that it links.
function(tarnwell_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "FOLDERS;LINKS")
  tarnwell_sources(sources ${layer_FOLDERS})
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/include
                             ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${layer_LINKS} PRIVATE tarnwell-options
                        $<BUILD_INTERFACE:tarnwell-hardening>)
  set_property(GLOBAL APPEND PROPERTY TARNWELL_LAYERS ${name})
endfunction()

# tarnwell_count_matches(TARGET): matches of patterns are counted in this program, which has
# tests/unit/matchcount.cpp among its sources.
function(tarnwell_count_matches target)
  target_link_options(${target} PRIVATE -Wl,--wrap=MatchPattern)
endfunction()
