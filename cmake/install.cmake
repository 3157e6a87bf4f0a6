# What an installation holds: the command, the libraries of the component, their public headers under
# include/pradelis/, and the package that find_package(pradelis) finds.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(libraries pradelis_values pradelis_dataaccess pradelis_component pradelis_automation)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/pradelis)

foreach(library IN LISTS libraries)
  string(REPLACE pradelis_ "" short_name ${library})
  set_target_properties(${library} PROPERTIES EXPORT_NAME ${short_name})
  target_include_directories(${library} PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/pradelis>)
endforeach()
install(TARGETS ${libraries} EXPORT pradelis_targets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS pradelis RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(public_headers
  values/clock.h values/convert.h values/date.h values/error.h values/object.h values/text.h values/variant.h
  dataaccess/connection.h dataaccess/quelcor.h dataaccess/recordset.h dataaccess/schema/schema.h
  component/crm.h component/error_reporting.h component/grupo_usuarios.h component/pessoa_juridica.h
  component/registry.h component/thread_state.h component/vendedor.h component/web_objects.h
  automation/class_table.h automation/classes.h automation/invoke.h automation/value_type.h)
foreach(header IN LISTS public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/pradelis/${folder})
endforeach()

install(EXPORT pradelis_targets NAMESPACE pradelis:: DESTINATION ${package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/pradelis-config.cmake.in
  ${PROJECT_BINARY_DIR}/pradelis-config.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/pradelis-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/pradelis-config.cmake ${PROJECT_BINARY_DIR}/pradelis-config-version.cmake
  DESTINATION ${package_folder})
