# What an installation holds and where: the programs, the help page, the desktop
# entry and icons, the man pages (made from the programs' help with help2man),
# the README and the licence; and the packages CPack makes of it: a Debian .deb
# and a Windows .zip.
#
# Included by the top-level CMakeLists.txt once the programs are defined.

set(SKL_PACKAGE_NAME skldbm)
set(SKL_PACKAGE_MAINTAINER "Skyloom Database Manager developers <skldbm@example.org>"
    CACHE STRING "Maintainer of the packages: Name <address>")

# Folders made by the installation are rwxr-xr-x whatever the umask.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(SKL_INSTALL_LAYOUT STREQUAL "flat")
  set(SKL_BIN_DIR .)
  set(SKL_HELP_DIR Help)
elseif(SKL_INSTALL_LAYOUT STREQUAL "gnu")
  set(SKL_BIN_DIR ${CMAKE_INSTALL_BINDIR})
  set(SKL_HELP_DIR ${CMAKE_INSTALL_DATADIR}/${SKL_PACKAGE_NAME}/Help)
  set(SKL_DOC_DIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/${SKL_PACKAGE_NAME})
else()
  message(FATAL_ERROR "SKL_INSTALL_LAYOUT is gnu or flat, not '${SKL_INSTALL_LAYOUT}'")
endif()

# The window looks for its help page at this path relative to its own folder
# when the program folder has none (an installed program).
file(RELATIVE_PATH SKL_HELP_FROM_BIN "/skl-prefix/${SKL_BIN_DIR}"
     "/skl-prefix/${SKL_HELP_DIR}/dbmanager.htm")
if(TARGET skldbwindow)
  target_compile_definitions(skldbwindow PUBLIC SKL_INSTALLED_HELP_PAGE="${SKL_HELP_FROM_BIN}")
endif()

install(TARGETS skldbm RUNTIME DESTINATION ${SKL_BIN_DIR})
if(TARGET SKLDbManager)
  install(TARGETS SKLDbManager RUNTIME DESTINATION ${SKL_BIN_DIR})
endif()
install(FILES ${CMAKE_SOURCE_DIR}/help/dbmanager.htm DESTINATION ${SKL_HELP_DIR})

set(SKL_PACKAGING_DIR ${CMAKE_SOURCE_DIR}/packaging)
if(SKL_INSTALL_LAYOUT STREQUAL "flat")
  # The zip: the programs and the generator of the demo installation, the help
  # page, a short README and the licence.
  install(TARGETS bglgen RUNTIME DESTINATION .)
  install(FILES ${SKL_PACKAGING_DIR}/windows/README.txt DESTINATION .)
  install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION . RENAME LICENSE.txt)
else()
  install(FILES ${SKL_PACKAGING_DIR}/skldbm.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${SKL_PACKAGING_DIR}/icons/skldbm.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  foreach(size IN ITEMS 16 24 32 48 64 128 256)
    install(FILES ${SKL_PACKAGING_DIR}/icons/skldbm-${size}.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps
            RENAME skldbm.png)
  endforeach()

  # share/doc/skldbm: the README, the licence as Debian's copyright file, and the
  # changelog, compressed as Debian wants it.
  set(SKL_DOC_BUILD_DIR ${CMAKE_BINARY_DIR}/packaging/doc)
  file(READ ${CMAKE_SOURCE_DIR}/LICENSE SKL_LICENSE_TEXT)
  string(STRIP "${SKL_LICENSE_TEXT}" SKL_LICENSE_TEXT)
  string(REGEX REPLACE "\n\n" "\n.\n" SKL_LICENSE_TEXT "${SKL_LICENSE_TEXT}")
  string(REGEX REPLACE "\n" "\n " SKL_LICENSE_TEXT " ${SKL_LICENSE_TEXT}")
  configure_file(${SKL_PACKAGING_DIR}/copyright.in ${SKL_DOC_BUILD_DIR}/copyright @ONLY)
  configure_file(${SKL_PACKAGING_DIR}/changelog.in ${SKL_DOC_BUILD_DIR}/changelog @ONLY)
  add_custom_command(
    OUTPUT ${SKL_DOC_BUILD_DIR}/changelog.gz
    COMMAND ${CMAKE_COMMAND} -DINPUT=${SKL_DOC_BUILD_DIR}/changelog
            -P ${SKL_PACKAGING_DIR}/Gzip.cmake
    DEPENDS ${SKL_DOC_BUILD_DIR}/changelog ${SKL_PACKAGING_DIR}/Gzip.cmake)
  add_custom_target(package-docs ALL DEPENDS ${SKL_DOC_BUILD_DIR}/changelog.gz)
  install(FILES ${CMAKE_SOURCE_DIR}/README.md ${SKL_DOC_BUILD_DIR}/copyright
                ${SKL_DOC_BUILD_DIR}/changelog.gz
          DESTINATION ${SKL_DOC_DIR})

  # Man pages from the programs' own --help (and each skldbm command's), with the
  # sections that the help does not hold taken from packaging/man/*.h2m.
  find_program(SKL_HELP2MAN help2man)
  if(SKL_HELP2MAN)
    set(SKL_MAN_PAGES ON)
    set(SKL_MAN_DIR ${CMAKE_BINARY_DIR}/man)
    set(pages "")
    foreach(program IN ITEMS skldbm SKLDbManager)
      if(NOT TARGET ${program})
        continue()
      endif()
      add_custom_command(
        OUTPUT ${SKL_MAN_DIR}/${program}.1.gz
        COMMAND ${CMAKE_COMMAND} -DHELP2MAN=${SKL_HELP2MAN} -DPROGRAM=$<TARGET_FILE:${program}>
                -DVERSION=${PROJECT_VERSION} -DINCLUDE=${SKL_PACKAGING_DIR}/man/${program}.h2m
                -DOUTPUT=${SKL_MAN_DIR}/${program}.1 -P ${SKL_PACKAGING_DIR}/man/MakeManPage.cmake
        DEPENDS ${program} ${SKL_PACKAGING_DIR}/man/${program}.h2m
                ${SKL_PACKAGING_DIR}/man/MakeManPage.cmake ${SKL_PACKAGING_DIR}/Gzip.cmake
        COMMENT "Writing the man page of ${program}")
      list(APPEND pages ${SKL_MAN_DIR}/${program}.1.gz)
    endforeach()
    add_custom_target(man-pages ALL DEPENDS ${pages})
    install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  else()
    set(SKL_MAN_PAGES OFF)
    message(STATUS "help2man not found: no man pages (apt-get install help2man)")
  endif()
endif()

# Packages: `cpack -G DEB` on Linux, `cpack -G ZIP` for the Windows build.
set(CPACK_PACKAGE_NAME ${SKL_PACKAGE_NAME})
set(CPACK_PACKAGE_VENDOR "Skyloom Database Manager developers")
set(CPACK_PACKAGE_CONTACT "${SKL_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "rebuilds the Skyloom moving-map databases from simulator scenery")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
if(SKL_INSTALL_LAYOUT STREQUAL "flat")
  set(CPACK_GENERATOR ZIP)
  string(TOLOWER "${CMAKE_SYSTEM_NAME}" system)
  set(CPACK_PACKAGE_FILE_NAME ${SKL_PACKAGE_NAME}-${PROJECT_VERSION}-${system})
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${SKL_PACKAGE_MAINTAINER}")
  set(CPACK_DEBIAN_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
  # The extended description; CPack puts the summary above it.
  set(CPACK_PACKAGE_DESCRIPTION
      "Reads the scenery.cfg of Flight Simulator 2004 or Flight Simulator X, walks
every active scenery area from the highest layer down, reads the BGL files
there and writes the nine airport and navigation database files of the Skyloom
moving-map program and a run log into its program folder. The simulators may
run natively on Windows or in a Wine prefix.

The package holds the window SKLDbManager and the command line skldbm.")
endif()
include(CPack)
