# Installs the build with DESTDIR, as the Debian package holds it, and checks the
# layout: the programs in bin/ and nothing else there, the help page where the
# installed window looks for it, a valid desktop entry whose program and icon are
# installed, the icon in every size its name claims, the man pages, the README
# and the licence. The installed skldbm then runs: its version, a folder search
# that finds nothing, and the demo through a remembered program folder. Skipped
# where dpkg-deb is absent (not a Debian system).
#
#   cmake -DBUILD_DIR=<build> -DSCRATCH=<folder> -DHELP_FROM_BIN=<relative path>
#         -DMAN_PAGES=ON|OFF -P CheckInstallLayout.cmake

find_program(DPKG_DEB dpkg-deb)
if(NOT DPKG_DEB)
  message("install layout: skipped, no dpkg-deb on this system")
  return()
endif()

set(faults "")
macro(fault text)
  list(APPEND faults "${text}")
endmacro()
macro(expect_file path)
  if(NOT EXISTS "${root}/${path}" OR IS_DIRECTORY "${root}/${path}")
    fault("missing: /${path}")
  endif()
endmacro()

file(REMOVE_RECURSE "${SCRATCH}")
set(root "${SCRATCH}/root")
set(ENV{DESTDIR} "${root}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix /usr
                OUTPUT_QUIET RESULT_VARIABLE result)
unset(ENV{DESTDIR})
if(NOT result EQUAL 0)
  message(FATAL_ERROR "install layout: the DESTDIR install failed (${result})")
endif()

# Everything lies under usr/; bin/ holds the two programs.
file(GLOB top RELATIVE "${root}" "${root}/*")
if(NOT top STREQUAL "usr")
  fault("the installation holds more than usr/: ${top}")
endif()
file(GLOB programs RELATIVE "${root}/usr/bin" "${root}/usr/bin/*")
list(SORT programs)
if(NOT programs STREQUAL "SKLDbManager;skldbm")
  fault("usr/bin holds '${programs}', not SKLDbManager and skldbm")
endif()

# The help page, where the installed window finds it from its own folder.
expect_file(usr/share/skldbm/Help/dbmanager.htm)
get_filename_component(page "${root}/usr/bin/${HELP_FROM_BIN}" ABSOLUTE)
if(NOT page STREQUAL "${root}/usr/share/skldbm/Help/dbmanager.htm")
  fault("the window looks for its help page at ${page}")
endif()

# The desktop entry: valid, its program installed, its icon in the theme.
set(desktop "${root}/usr/share/applications/skldbm.desktop")
expect_file(usr/share/applications/skldbm.desktop)
find_program(DESKTOP_FILE_VALIDATE desktop-file-validate)
if(DESKTOP_FILE_VALIDATE AND EXISTS "${desktop}")
  execute_process(COMMAND ${DESKTOP_FILE_VALIDATE} "${desktop}" RESULT_VARIABLE result
                  OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT result EQUAL 0 OR out)
    fault("desktop-file-validate: ${out}")
  endif()
endif()
if(EXISTS "${desktop}")
  file(STRINGS "${desktop}" exec REGEX "^Exec=")
  file(STRINGS "${desktop}" icon REGEX "^Icon=")
  if(NOT exec STREQUAL "Exec=SKLDbManager" OR NOT icon STREQUAL "Icon=skldbm")
    fault("the desktop entry starts '${exec}' with '${icon}'")
  endif()
endif()
expect_file(usr/share/icons/hicolor/scalable/apps/skldbm.svg)
foreach(size IN ITEMS 16 24 32 48 64 128 256)
  set(png "usr/share/icons/hicolor/${size}x${size}/apps/skldbm.png")
  expect_file(${png})
  if(EXISTS "${root}/${png}")
    # The width and height in the PNG header (bytes 16 to 23, big-endian).
    file(READ "${root}/${png}" header LIMIT 24 HEX)
    math(EXPR expected "${size}" OUTPUT_FORMAT HEXADECIMAL)
    string(SUBSTRING "${header}" 32 16 dimensions)
    string(SUBSTRING "${expected}" 2 -1 digits)
    string(LENGTH "${digits}" length)
    math(EXPR padding "8 - ${length}")
    string(REPEAT "0" ${padding} zeros)
    if(NOT header MATCHES "^89504e47" OR NOT dimensions STREQUAL "${zeros}${digits}${zeros}${digits}")
      fault("${png} is no ${size}x${size} PNG")
    endif()
  endif()
endforeach()

# Man pages, compressed, and the documents Debian wants.
if(MAN_PAGES)
  foreach(program IN ITEMS skldbm SKLDbManager)
    set(man "usr/share/man/man1/${program}.1.gz")
    expect_file(${man})
    if(EXISTS "${root}/${man}")
      execute_process(COMMAND gzip -dc "${root}/${man}" OUTPUT_VARIABLE text RESULT_VARIABLE result)
      string(TOUPPER "${program}" upper)
      if(NOT result EQUAL 0 OR NOT text MATCHES "\n\\.TH ${upper} \"1\"")
        fault("${man} is no man page of ${program}")
      endif()
    endif()
  endforeach()
endif()
foreach(doc IN ITEMS README.md copyright changelog.gz)
  expect_file(usr/share/doc/skldbm/${doc})
endforeach()

# The installed skldbm runs, searches for its program folder and finds the one
# remembered for it. The places of the search lie in the scratch folder.
set(skldbm "${root}/usr/bin/skldbm")
execute_process(COMMAND "${skldbm}" --version OUTPUT_VARIABLE version RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT version MATCHES "^Database Manager Vers\\.: ")
  fault("skldbm --version said '${version}' (${result})")
endif()
set(ENV{XDG_CONFIG_HOME} "${SCRATCH}/config")
set(ENV{WINEPREFIX} "${SCRATCH}/wine")
file(COPY "${BUILD_DIR}/demo/" DESTINATION "${SCRATCH}/demo")
set(update "${skldbm}" update "${SCRATCH}/demo/FS9" --map-drive "D=${SCRATCH}/demo/drive_d")
execute_process(COMMAND ${update} RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE err)
if(NOT result EQUAL 2 OR NOT err MATCHES "no Skyloom program folder found.*Looked at:\n  ${root}/usr/bin \\(the folder of skldbm\\).*--program-folder")
  fault("skldbm without a program folder: ${result}: ${err}")
endif()
file(WRITE "${SCRATCH}/config/skldbm/program-folder" "${SCRATCH}/demo/Skyloom\n")
execute_process(COMMAND ${update} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT result EQUAL 0 OR NOT EXISTS "${SCRATCH}/demo/Skyloom/database/FS09/Airport.skl")
  fault("skldbm with a remembered program folder: ${result}: ${out}${err}")
endif()
if(EXISTS "${root}/usr/bin/SKLDBM_FS09.LOG")
  fault("skldbm wrote its log beside itself")
endif()

# dpkg-deb makes a package of the tree as it stands.
file(MAKE_DIRECTORY "${root}/DEBIAN")
file(WRITE "${root}/DEBIAN/control" "Package: skldbm\nVersion: 0\nArchitecture: all\n"
           "Maintainer: Test <test@example.org>\nDescription: layout test\n")
execute_process(COMMAND ${DPKG_DEB} -Znone --root-owner-group --build "${root}" "${SCRATCH}/layout.deb"
                RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE err)
if(NOT result EQUAL 0)
  fault("dpkg-deb --build: ${err}")
endif()

if(faults)
  list(JOIN faults "\n  " text)
  message(FATAL_ERROR "install layout:\n  ${text}")
endif()
file(REMOVE_RECURSE "${SCRATCH}")
message("install layout: as the package wants it")
