# Cross-compiles for 32-bit Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(mingw i686-w64-mingw32)
set(PRADELIS_WIDL_WIDTH --win32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
