# SPDX-License-Identifier: GPL-3.0-or-later
# lodex_library(<target> [PREFIX <prefix>] [SOURCES <file>...] [LINKS <library>...] [USES <library>...])
#
# A static library of the current folder; without sources, of headers alone. A header is included by its path
# from the repository's root, or from SDKs/: "effect/engine/BeatTrigger.h", "Orbel/contract/OrbelOS.h". PREFIX
# replaces the folder in front of its name. LINKS are the libraries whose headers its own headers include,
# USES those that its sources alone need.
#
# Each library has an include root of its own that holds nothing but this one folder, and a target sees the
# roots of what it links: an include that points up the house does not build.
function(lodex_library target)
  cmake_parse_arguments(LIB "" "PREFIX" "SOURCES;LINKS;USES" ${ARGN})
  if(NOT LIB_PREFIX)
    file(RELATIVE_PATH LIB_PREFIX ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    string(REGEX REPLACE "^SDKs/" "" LIB_PREFIX ${LIB_PREFIX})
  endif()
  set(link ${PROJECT_BINARY_DIR}/include/${target}/${LIB_PREFIX})
  cmake_path(GET link PARENT_PATH parent)
  if(IS_SYMLINK ${parent}) # from a time when the folder above was this library
    file(REMOVE ${parent})
  endif()
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${link} SYMBOLIC)

  if(LIB_SOURCES)
    add_library(${target} STATIC ${LIB_SOURCES})
    target_include_directories(${target} PUBLIC ${PROJECT_BINARY_DIR}/include/${target})
    target_link_libraries(${target} PUBLIC ${LIB_LINKS} PRIVATE ${LIB_USES})
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${PROJECT_BINARY_DIR}/include/${target})
    target_link_libraries(${target} INTERFACE ${LIB_LINKS})
  endif()
endfunction()
