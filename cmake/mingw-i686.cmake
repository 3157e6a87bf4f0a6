# Cross-compiles for 32-bit Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(mingw i686-w64-mingw32)
set(PRADELIS_WIDL_WIDTH --win32)
# Doubles are computed as everywhere else, without the excess precision of the old registers. Callers of that
# width align the stack to four bytes only.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
# The names in the definition file are those without the size of the arguments.
string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT " -Wl,--enable-stdcall-fixup")
