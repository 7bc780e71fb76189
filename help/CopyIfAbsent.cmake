# Copies SOURCE to DESTINATION unless a file is there already, so that a help page
# that the user or an earlier installation put in place is kept.
#   cmake -DSOURCE=... -DDESTINATION=... -P CopyIfAbsent.cmake
if(NOT EXISTS "${DESTINATION}")
  get_filename_component(destinationFolder "${DESTINATION}" DIRECTORY)
  file(MAKE_DIRECTORY "${destinationFolder}")
  file(COPY_FILE "${SOURCE}" "${DESTINATION}")
endif()
