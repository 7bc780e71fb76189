# Writes the man page of a program with help2man from its --help, and, for a
# program with commands (skldbm), from each command's --help too; then gzips it.
#   cmake -DHELP2MAN=<help2man> -DPROGRAM=<program> -DVERSION=<x.y>
#         -DINCLUDE=<file.h2m> -DOUTPUT=<name.1> -P MakeManPage.cmake
get_filename_component(folder "${PROGRAM}" DIRECTORY)
get_filename_component(name "${PROGRAM}" NAME)
# Called by name through PATH, so that the usage lines show the bare name; the
# window's help needs no display.
set(ENV{PATH} "${folder}:$ENV{PATH}")
set(ENV{QT_QPA_PLATFORM} offscreen)
# A sanitizer build's programs print their help like any other; what the
# toolkit leaves allocated at exit is not this page's business.
set(ENV{ASAN_OPTIONS} "detect_leaks=0")

file(READ "${INCLUDE}" include)
execute_process(COMMAND ${name} --help OUTPUT_VARIABLE help RESULT_VARIABLE result ERROR_QUIET)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${name} --help failed: ${result}")
endif()

# The commands listed under "Subcommands:", each with its own help as it prints it.
string(REGEX MATCH "\n[Ss][Uu][Bb][Cc][Oo][Mm][Mm][Aa][Nn][Dd][Ss]:\n(  [^\n]*\n?)+" listing "${help}")
string(REGEX MATCHALL "\n  [a-z][a-z-]*" commands "${listing}")
if(commands)
  string(APPEND include "\n[COMMANDS]\n")
  foreach(command IN LISTS commands)
    string(STRIP "${command}" command)
    execute_process(COMMAND ${name} ${command} --help OUTPUT_VARIABLE text ERROR_QUIET)
    string(STRIP "${text}" text)
    string(REPLACE "\\" "\\e" text "${text}")
    string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" text "${text}")
    string(APPEND include ".SS \"${name} ${command}\"\n.nf\n${text}\n.fi\n")
  endforeach()
endif()
file(WRITE "${OUTPUT}.h2m" "${include}")

execute_process(
  COMMAND ${HELP2MAN} --no-info --section=1 --version-string=${VERSION}
          --include=${OUTPUT}.h2m --output=${OUTPUT} ${name}
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "help2man ${name}: ${result}")
endif()
get_filename_component(here "${CMAKE_CURRENT_LIST_DIR}" DIRECTORY)
execute_process(COMMAND ${CMAKE_COMMAND} -DINPUT=${OUTPUT} -P ${here}/Gzip.cmake
                RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "gzip ${OUTPUT}: ${result}")
endif()
