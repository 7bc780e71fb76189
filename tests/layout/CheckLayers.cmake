# Keeps the house in layers: platform <- model <- skl <- scenery, bgl,
# consolidation <- run <- cli, frontend. Reads every #include "folder/..." of
# src/ and fails when a file reaches a folder its own folder may not include,
# when an operating-system header is included outside src/platform/, or when
# code outside src/platform/ picks a platform with #ifdef.
#
#   cmake -DSOURCE_DIR=<checkout> -P CheckLayers.cmake

cmake_minimum_required(VERSION 3.22)

if(NOT SOURCE_DIR)
  message(FATAL_ERROR "CheckLayers: SOURCE_DIR is not set")
endif()

# What each folder may include besides itself.
set(allowed_platform "")
set(allowed_model platform)
set(allowed_skl platform model)
set(allowed_scenery platform model skl)
set(allowed_bgl platform model skl)
set(allowed_consolidation platform model skl)
set(allowed_run platform model skl scenery bgl consolidation)
set(allowed_cli platform model skl scenery bgl consolidation run)
set(allowed_frontend platform model skl scenery bgl consolidation run)
set(folders platform model skl scenery bgl consolidation run cli frontend)

# Headers of an operating system's own interface.
set(os_header_regex
    "^(unistd|fcntl|dirent|signal|termios|poll|pthread|dlfcn|pwd|windows|winbase|io|direct|shlobj|conio)\\.h$|^sys/|^csignal$|^ctime$|^time\\.h$")

set(faults "")
file(GLOB_RECURSE sources RELATIVE "${SOURCE_DIR}/src" "${SOURCE_DIR}/src/*.h" "${SOURCE_DIR}/src/*.cpp")
foreach(source IN LISTS sources)
  string(REGEX MATCH "^[^/]+" folder "${source}")
  if(NOT folder IN_LIST folders)
    list(APPEND faults "src/${source}: folder '${folder}' has no place in the layers")
    continue()
  endif()
  file(STRINGS "${SOURCE_DIR}/src/${source}" lines REGEX "^[ \t]*#[ \t]*(include|if|ifdef|ifndef|elif)")
  foreach(line IN LISTS lines)
    if(line MATCHES "#[ \t]*include[ \t]*\"([^/\"]+)/[^\"]*\"")
      set(target "${CMAKE_MATCH_1}")
      if(NOT target STREQUAL folder AND NOT target IN_LIST allowed_${folder})
        list(APPEND faults "src/${source}: ${folder}/ may not include ${target}/ (${line})")
      endif()
    elseif(line MATCHES "#[ \t]*include[ \t]*<([^>]+)>" AND NOT folder STREQUAL "platform")
      if(CMAKE_MATCH_1 MATCHES "${os_header_regex}")
        list(APPEND faults "src/${source}: operating-system header outside src/platform/ (${line})")
      endif()
    elseif(line MATCHES "_WIN32|__linux__|__unix__|__APPLE__|_MSC_VER|__MINGW" AND NOT folder STREQUAL "platform")
      list(APPEND faults "src/${source}: platform chosen by the preprocessor outside src/platform/ (${line})")
    endif()
  endforeach()
endforeach()

if(faults)
  list(JOIN faults "\n" text)
  message(FATAL_ERROR "Includes that break the layers:\n${text}")
endif()
list(LENGTH sources count)
message(STATUS "CheckLayers: ${count} files keep to their layers")
