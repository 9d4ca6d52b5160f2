# The language, the warnings and the sanitizers of every target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Older g++ destroys temporaries twice in co_await expressions (aggregates and capturing lambdas).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14)
  message(FATAL_ERROR "g++ before 14 miscompiles coroutines; use clang 19 (cmake --preset release does).")
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_CURRENT_LIST_DIR}/through-ccache ${PROJECT_SOURCE_DIR})
endif()

set(TOLVANE_SANITIZE "" CACHE STRING "Sanitizers, as for -fsanitize=")
set(TOLVANE_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wextra-semi
    # Designated initialisers name only the fields that matter; the others keep their defaults.
    -Wno-missing-field-initializers -Wno-missing-designated-field-initializers
    # std::stable_sort of libstdc++ 12 uses functions that the library itself deprecates.
    -Wno-deprecated-declarations -Werror)

add_compile_options(-fno-omit-frame-pointer)
if(APPLE)
  # Up to version 19, libc++ counts the stop tokens of C++20 as experimental.
  add_compile_options(-fexperimental-library)
endif()
if(TOLVANE_SANITIZE)
  add_compile_options(-fsanitize=${TOLVANE_SANITIZE} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${TOLVANE_SANITIZE})
endif()
if(TOLVANE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
