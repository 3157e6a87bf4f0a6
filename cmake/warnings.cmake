# The one place for warnings and sanitizers: every target of the tree links pradelis_warnings.
set(PRADELIS_SANITIZE "" CACHE STRING "Sanitizers to build with, separated by commas")

add_library(pradelis_warnings INTERFACE)
target_compile_options(pradelis_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  -Wcast-qual -Woverloaded-virtual -Wnull-dereference -Werror)
if(PRADELIS_SANITIZE)
  target_compile_options(pradelis_warnings INTERFACE
    -fsanitize=${PRADELIS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    -Wno-null-dereference -Wno-maybe-uninitialized)
  target_link_options(pradelis_warnings INTERFACE -fsanitize=${PRADELIS_SANITIZE})
endif()
