# SPDX-License-Identifier: GPL-3.0-or-later
# lodex_resources(<library> NAME <function> ENTRIES <name>=<file>[:zlib|:scrambled]... [DEPENDS <target>...])
#
# A static library with one block of resources in its read-only data, and "Orbel::ResourceBlock <function>()",
# which a header of the current folder declares. The block is made while the project is built. DEPENDS are the
# targets that make those of the files which are made, too.
set(LODEX_RESOURCE_TEMPLATE ${CMAKE_CURRENT_LIST_DIR}/ResourceBlock.cpp.in)

function(lodex_resources library)
  cmake_parse_arguments(BLOCK "" "NAME" "ENTRIES;DEPENDS" ${ARGN})
  set(BLOCK_FILE ${CMAKE_CURRENT_BINARY_DIR}/${library}.block)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${library}.cpp)
  set(files ${BLOCK_ENTRIES})
  list(TRANSFORM files REPLACE "^[^=]*=" "")
  list(TRANSFORM files REPLACE ":(zlib|scrambled)$" "")

  add_custom_command(
    OUTPUT ${BLOCK_FILE}
    COMMAND pack_resources ${BLOCK_FILE} ${BLOCK_ENTRIES}
    DEPENDS pack_resources ${files} ${BLOCK_DEPENDS}
    COMMENT "Packing ${library}"
    VERBATIM)
  configure_file(${LODEX_RESOURCE_TEMPLATE} ${source} @ONLY)
  # The compiler does not tell that the assembler reads a file.
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS ${BLOCK_FILE})
  lodex_library(${library} PREFIX resources SOURCES ${source} LINKS orbel_storage)
endfunction()
