# SPDX-License-Identifier: GPL-3.0-or-later
# Compiles each header by itself: OWN must build, and none of NOT may be found. Lists are joined by "|".
string(REPLACE "|" ";" DEFINITIONS "${DEFINITIONS}")
list(TRANSFORM DEFINITIONS PREPEND "-D")
string(REPLACE "|" ";" ROOTS "${ROOTS}")
string(REPLACE "|" ";" NOT "${NOT}")
list(TRANSFORM ROOTS PREPEND "-I")

function(compile header result output)
  execute_process(
    COMMAND ${COMPILER} -std=c++20 -fsyntax-only -include ${header} ${DEFINITIONS} ${ROOTS} ${PROBE}
    RESULT_VARIABLE code
    ERROR_VARIABLE text)
  set(${result} ${code} PARENT_SCOPE)
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

compile(${OWN} code text)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "${OWN} does not build with the roots of its own library:\n${text}")
endif()
foreach(header IN LISTS NOT)
  compile(${header} code text)
  if(code EQUAL 0 OR NOT text MATCHES "${header}")
    message(FATAL_ERROR "${header} can be included from a floor that must not know it.\n${text}")
  endif()
endforeach()
