# SPDX-License-Identifier: GPL-3.0-or-later
# How every target of the project is compiled.

option(LODEX_TESTS "Build the tests" ON)
option(LODEX_BENCH "Build the benchmarks" ON)
option(LODEX_FUZZ "Build the libFuzzer targets (needs Clang)" OFF)
option(LODEX_WERROR "Treat warnings as errors" ON)
set(LODEX_SANITIZE "" CACHE STRING "Sanitizers for every target: address,undefined or thread or empty")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_compile_options(-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wno-restrict) # GCC 12 raises false alarms in std::string (its bug 105329)
endif()
if(LODEX_WERROR)
  add_compile_options(-Werror)
endif()

# The same bits on every machine and at every optimisation level: no fused multiply-add, and the
# sums in the order in which they are written (so never -ffast-math).
add_compile_options(-ffp-contract=off)

if(LODEX_SANITIZE)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized) # false alarms in what the sanitizers add
  endif()
  add_compile_options(-fsanitize=${LODEX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${LODEX_SANITIZE})
endif()

# The libraries, too, count the branches that they take: the fuzzer finds its way by them.
if(LODEX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

find_package(Threads REQUIRED)
