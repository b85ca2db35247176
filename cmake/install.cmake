# What `cmake --install` puts in place, so that find_package(nurvex7) gives nurvex7::nurvex7, and
# nurvex7::qt where the Qt host was built.
include(CMakePackageConfigHelpers)

set(NURVEX_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/nurvex7)
# The headers of the host name each other by their place in this tree, so they keep it.
set(NURVEX_QT_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/nurvex7-qt)

install(TARGETS nurvex7 EXPORT nurvex7Targets)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/nurvex7 DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
if(NURVEX_QT)
  target_include_directories(nurvex7_qt INTERFACE $<INSTALL_INTERFACE:${NURVEX_QT_INCLUDEDIR}>)
  set_target_properties(nurvex PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS nurvex7_qt EXPORT nurvex7Targets)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/hosts/qt DESTINATION ${NURVEX_QT_INCLUDEDIR}/hosts
          FILES_MATCHING PATTERN "*.h")
  install(TARGETS nurvex)
endif()

install(EXPORT nurvex7Targets NAMESPACE nurvex7:: DESTINATION ${NURVEX_PACKAGE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/nurvex7Config.cmake.in
  ${PROJECT_BINARY_DIR}/nurvex7Config.cmake INSTALL_DESTINATION ${NURVEX_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/nurvex7ConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/nurvex7Config.cmake
              ${PROJECT_BINARY_DIR}/nurvex7ConfigVersion.cmake
        DESTINATION ${NURVEX_PACKAGE_DIR})
