# One library for each folder, linked only to the folders of lower floors.
include(${CMAKE_CURRENT_LIST_DIR}/warnings.cmake)

# pradelis_folder(NAME folder [folder ...] [USES target ...] [PRIVATE_USES target ...]):
# a library of all sources of these folders.
function(pradelis_folder name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;USES;PRIVATE_USES" ${ARGN})
  set(sources)
  foreach(folder IN LISTS ARG_FOLDERS)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    list(APPEND sources ${found})
  endforeach()
  add_library(${name} STATIC ${sources})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  target_link_libraries(${name} PUBLIC ${ARG_USES} PRIVATE $<BUILD_INTERFACE:pradelis_warnings> ${ARG_PRIVATE_USES})
endfunction()

pradelis_folder(pradelis_values FOLDERS values)

# What the platform brings: the library for Windows is one file, which reaches databases by ODBC alone.
set(dataaccess_folders dataaccess dataaccess/odbc dataaccess/schema)
if(WIN32)
  list(APPEND dataaccess_folders dataaccess/cng)
  # C++'s own library would keep the one for Windows loaded until each thread that used it ends. The platform's
  # way of ending what threads keep (mingw32) has to be found before it: that one lets go.
  set(dataaccess_libraries odbc32 bcrypt mingw32)
else()
  find_package(ODBC REQUIRED)
  find_package(SQLite3 REQUIRED)
  find_package(OpenSSL REQUIRED COMPONENTS Crypto)
  find_package(Threads REQUIRED)
  list(APPEND dataaccess_folders dataaccess/sqlite dataaccess/openssl)
  set(dataaccess_libraries SQLite::SQLite3 ODBC::ODBC OpenSSL::Crypto Threads::Threads)
endif()
pradelis_folder(pradelis_dataaccess FOLDERS ${dataaccess_folders}
  USES pradelis_values PRIVATE_USES ${dataaccess_libraries})
# The business methods and the frame know each other by CRM's one header, so they are one library.
pradelis_folder(pradelis_component
  FOLDERS component login deals accounts catalog customfields trees users
  USES pradelis_dataaccess)
pradelis_folder(pradelis_automation FOLDERS automation USES pradelis_component)

add_subdirectory(${PROJECT_SOURCE_DIR}/com)
if(WIN32)
  return()
endif()

# The site: HTTP and templates from the system's libraries, its files inside the program.
find_package(mstch REQUIRED)
find_library(HTTPLIB_LIBRARY cpp-httplib REQUIRED)
add_library(pradelis_httplib INTERFACE)
# The classes' layout depends on these: they are what the system's library was built with.
target_compile_definitions(pradelis_httplib INTERFACE
  CPPHTTPLIB_OPENSSL_SUPPORT CPPHTTPLIB_ZLIB_SUPPORT CPPHTTPLIB_BROTLI_SUPPORT)
target_link_libraries(pradelis_httplib INTERFACE ${HTTPLIB_LIBRARY} Threads::Threads)

pradelis_folder(pradelis_site FOLDERS site site/pages
  USES pradelis_component PRIVATE_USES mstch::mstch pradelis_httplib Threads::Threads)
file(GLOB_RECURSE site_files CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/site/templates/* ${PROJECT_SOURCE_DIR}/site/assets/*)
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/embedded.cpp
  COMMAND ${CMAKE_COMMAND} -DOUTPUT=${PROJECT_BINARY_DIR}/embedded.cpp -DSITE=${PROJECT_SOURCE_DIR}/site
          -P ${PROJECT_SOURCE_DIR}/cmake/embed.cmake
  DEPENDS ${site_files} ${PROJECT_SOURCE_DIR}/cmake/embed.cmake
  COMMENT "Putting the site's files into the program"
  VERBATIM)
target_sources(pradelis_site PRIVATE ${PROJECT_BINARY_DIR}/embedded.cpp)

file(GLOB command_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/command/*.cpp)
add_executable(pradelis ${command_sources})
set_target_properties(pradelis PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
target_compile_definitions(pradelis PRIVATE PRADELIS_VERSION="${PROJECT_VERSION}")
target_link_libraries(pradelis PRIVATE pradelis_automation pradelis_site pradelis_warnings)
