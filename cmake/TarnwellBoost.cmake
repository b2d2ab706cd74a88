# tarnwell-boost: the headers of Boost.Regex and nothing else, which a cross build can share with
# the build machine, since they are headers only (from 1.76 on).
find_path(TARNWELL_BOOST_ROOT boost/regex.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(STRINGS ${TARNWELL_BOOST_ROOT}/boost/version.hpp version REGEX "define BOOST_VERSION ")
string(REGEX MATCH "[0-9]+$" version "${version}")
if(version LESS 107600)
  message(FATAL_ERROR "Boost 1.76 or later is needed (on Debian 12: libboost1.81-dev)")
endif()

file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/boost)
file(CREATE_LINK ${TARNWELL_BOOST_ROOT}/boost ${PROJECT_BINARY_DIR}/boost/boost SYMBOLIC)
add_library(tarnwell-boost INTERFACE)
target_include_directories(tarnwell-boost SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/boost)
