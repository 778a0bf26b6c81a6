# lodex_library(<target> PREFIX <prefix> SOURCES <file>... [LINKS <library>...])
#
# A static library of the current folder. Its headers are included as "<prefix>/Header.h", and only by
# targets that link it: each library has an include root of its own with nothing but that one prefix in
# it. An include that points up the house therefore fails to build.
function(lodex_library target)
  cmake_parse_arguments(LIB "" "PREFIX" "SOURCES;LINKS" ${ARGN})
  set(root ${PROJECT_BINARY_DIR}/include/${target})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${LIB_PREFIX} SYMBOLIC)

  add_library(${target} STATIC ${LIB_SOURCES})
  target_include_directories(${target} PUBLIC ${root})
  target_link_libraries(${target} PUBLIC ${LIB_LINKS})
endfunction()
