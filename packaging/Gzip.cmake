# Compresses INPUT into INPUT.gz the way Debian wants documentation and man pages:
# best compression, no name and no time stamp in the header.
#   cmake -DINPUT=<file> -P Gzip.cmake
find_program(GZIP gzip REQUIRED)
execute_process(COMMAND ${GZIP} -9 -n -c ${INPUT} OUTPUT_FILE ${INPUT}.gz RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  file(REMOVE ${INPUT}.gz)
  message(FATAL_ERROR "gzip ${INPUT}: ${result}")
endif()
