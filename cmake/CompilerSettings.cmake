# Warnings are errors everywhere; sanitizers are chosen by preset.
set(TESSALY_SANITIZE "" CACHE STRING "Sanitizers for all targets, as -fsanitize takes them")

add_compile_options(
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wformat=2
  -Wcast-align -Wunused -Wnull-dereference -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # At -O3 g++ 12 sees faults in the library's strings and Qt's containers that aren't there.
  add_compile_options("$<$<CONFIG:Release>:-Wno-restrict;-Wno-null-dereference>")
endif()
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  add_compile_definitions(_FILE_OFFSET_BITS=64) # a package may have 4 GiB
endif()

if(TESSALY_SANITIZE)
  add_compile_options(-fsanitize=${TESSALY_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TESSALY_SANITIZE})
  # The sanitizers' own instrumentation sets off these warnings in g++.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-null-dereference -Wno-maybe-uninitialized)
  endif()
endif()

if(CMAKE_CXX_CLANG_TIDY)
  # What Qt's tools generate isn't ours to mend; no check at all would be an error.
  file(WRITE ${CMAKE_BINARY_DIR}/.clang-tidy "Checks: '-*,misc-static-assert'\n")
endif()
