# Which part of the installation goes into which kind of package.
if(CPACK_GENERATOR STREQUAL "TGZ")
  set(CPACK_COMPONENTS_ALL plugin)
else()
  set(CPACK_COMPONENTS_ALL desk editor)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY OFF)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()
