# Cross-compiles for 64-bit Windows. Everything the compiler brings is linked in, so that the library is
# one file; the posix-thread variant has the whole thread library of C++.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(mingw x86_64-w64-mingw32)
set(PRADELIS_WIDL_WIDTH --win64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
