# What is installed where, and the packages of it: the plug-in alone as an archive, which is what goes
# to a controller, and the desk and the files for editors as Debian packages. `make packages` builds
# them all.
if(NOT CUS_ARCHITECTURE)
  set(CUS_ARCHITECTURE ${CMAKE_SYSTEM_PROCESSOR})
  string(REGEX REPLACE "^(x86_64|AMD64)$" "amd64" CUS_ARCHITECTURE "${CUS_ARCHITECTURE}")
  string(REGEX REPLACE "^aarch64$" "arm64" CUS_ARCHITECTURE "${CUS_ARCHITECTURE}")
  string(REGEX REPLACE "^arm.*$" "armhf" CUS_ARCHITECTURE "${CUS_ARCHITECTURE}")
endif()
set(CUS_PACKAGE_CONTACT "The developers of cusdesk <developers@cusdesk.invalid>" CACHE STRING
    "Who answers for the Debian packages, as \"NAME <ADDRESS>\"")

# The same modes whatever the umask says.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

install(TARGETS Custom_LuaParseModule DESTINATION . COMPONENT plugin EXCLUDE_FROM_ALL)
# What a host is compiled with: what the plug-in offers and expects, and the class of its table part.
set(host_headers host/cbl.h host/media.h host/part_types.h host/plugin.h host/utility.h)
set(part_headers part/svg_table.h part/table_part.h part/table_picture.h)
install(FILES ${host_headers} DESTINATION include/host COMPONENT plugin EXCLUDE_FROM_ALL)
install(FILES ${part_headers} DESTINATION include/part COMPONENT plugin EXCLUDE_FROM_ALL)
install(CODE "set(CUS_SOURCE_DIR \"${PROJECT_SOURCE_DIR}\")
set(CUS_ARCHITECTURE ${CUS_ARCHITECTURE})" COMPONENT plugin EXCLUDE_FROM_ALL)
install(SCRIPT ${CMAKE_CURRENT_LIST_DIR}/write_archive_pages.cmake COMPONENT plugin EXCLUDE_FROM_ALL)
if(CUS_BUILD_DESK)
  install(TARGETS cusdesk DESTINATION bin COMPONENT desk)
  install(TARGETS Custom_LuaParseModule DESTINATION lib/cusdesk COMPONENT desk)
  install(DIRECTORY examples DESTINATION share/cusdesk COMPONENT desk
          PATTERN cutCurIndex.txt EXCLUDE)
  install(FILES ${host_headers} DESTINATION include/cusdesk/host COMPONENT desk)
  install(FILES ${part_headers} DESTINATION include/cusdesk/part COMPONENT desk)
  # As they lie in the sources: the pages link each other.
  install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION share/doc/cusdesk
          COMPONENT desk)
  install(DIRECTORY docs DESTINATION share/doc/cusdesk COMPONENT desk)
  install(FILES schema/README.md DESTINATION share/doc/cusdesk/schema COMPONENT desk)
  install(DIRECTORY schema/ DESTINATION share/cusdesk/schema COMPONENT editor)
  foreach(package cusdesk:desk cusdesk-editor:editor)
    string(REPLACE ":" ";" package ${package})
    list(GET package 1 component)
    list(GET package 0 package)
    install(FILES cmake/debian/copyright DESTINATION share/doc/${package} COMPONENT ${component})
    install(CODE "set(CUS_PACKAGE ${package})
set(CUS_VERSION ${PROJECT_VERSION})
set(CUS_CONTACT \"${CUS_PACKAGE_CONTACT}\")" COMPONENT ${component})
    install(SCRIPT ${CMAKE_CURRENT_LIST_DIR}/write_debian_changelog.cmake COMPONENT ${component})
  endforeach()

  # The program writes its own pages.
  set(pages ${CMAKE_BINARY_DIR}/pages)
  add_custom_command(OUTPUT ${pages}/cusdesk ${pages}/cusdesk.fish ${pages}/cusdesk.1.gz
    COMMAND ${CMAKE_COMMAND} -E make_directory ${pages}
    COMMAND cusdesk export completion > ${pages}/cusdesk
    COMMAND cusdesk export fish > ${pages}/cusdesk.fish
    COMMAND cusdesk export man > ${pages}/cusdesk.1
    COMMAND gzip -9nf ${pages}/cusdesk.1
    DEPENDS cusdesk)
  add_custom_target(pages ALL DEPENDS ${pages}/cusdesk ${pages}/cusdesk.fish ${pages}/cusdesk.1.gz)
  install(FILES ${pages}/cusdesk DESTINATION share/bash-completion/completions COMPONENT desk)
  install(FILES ${pages}/cusdesk.fish DESTINATION share/fish/vendor_completions.d COMPONENT desk)
  install(FILES ${pages}/cusdesk.1.gz DESTINATION share/man/man1 COMPONENT desk)
endif()

set(CPACK_PACKAGE_CONTACT "${CUS_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_VENDOR "cusdesk")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_GENERATOR TGZ DEB)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/package_contents.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/package_times.cmake)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
# Also the folder in the archive: those of two architectures can be unpacked side by side.
set(CPACK_PACKAGE_FILE_NAME cus-parse-module-${PROJECT_VERSION}-${CUS_ARCHITECTURE})
set(CPACK_ARCHIVE_PLUGIN_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})

set(CPACK_DEB_COMPONENT_INSTALL ON)
# Not the project's: the first line of each package's own description is its summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_DESK_PACKAGE_NAME cusdesk)
set(CPACK_DEBIAN_DESK_FILE_NAME cusdesk_${PROJECT_VERSION}_${CUS_ARCHITECTURE}.deb)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${CUS_ARCHITECTURE})
set(CPACK_DEBIAN_DESK_PACKAGE_SECTION science)
set(CPACK_COMPONENT_DESK_DESCRIPTION
"Desk runtime for the cutting-job scripts of panel controllers
Stands in for the panel of a profile cutting machine: runs its scripts with
the very plug-in that goes to the controller, checks, shows and draws cutting
jobs, and examines plug-ins before they go there.")
# Named here and not found out by dpkg-shlibdeps, which knows only this machine's architecture. The
# test compares the list with what the program needs.
set(CPACK_DEBIAN_DESK_PACKAGE_DEPENDS
    "libc6 (>= 2.36), libstdc++6 (>= 12), libgcc-s1, libcurl4, libedit2, libelf1, libexpat1, libjsoncpp25, liblua5.3-0, libmicrohttpd12, libtinyxml2-9")
# a browser for the panel's page, and its pictures as PNG
set(CPACK_DEBIAN_DESK_PACKAGE_RECOMMENDS "xdg-utils, librsvg2-bin")

set(CPACK_DEBIAN_EDITOR_PACKAGE_NAME cusdesk-editor)
set(CPACK_DEBIAN_EDITOR_FILE_NAME cusdesk-editor_${PROJECT_VERSION}_all.deb)
set(CPACK_DEBIAN_EDITOR_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_EDITOR_PACKAGE_SECTION science)
set(CPACK_COMPONENT_EDITOR_DESCRIPTION
"Editor support for cutting jobs and the scripts of panel controllers
What editors need in order to help with cutting jobs and panel scripts:
JSON Schema, XML Schema, a stub of the script module and settings for
luacheck.")
include(CPack)
