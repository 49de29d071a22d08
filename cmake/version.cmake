# Writes the header that tells which version this is and which commit it was built from; leaves it alone when nothing has changed.
# cmake -DVERSION=4.0.0 -DSOURCE=folder -DHEADER=file -P version.cmake
find_program(GIT git)
set(COMMIT "")
if(GIT)
  execute_process(COMMAND ${GIT} -C ${SOURCE} describe --always --dirty --match= --abbrev=10
                  OUTPUT_VARIABLE COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/version.h.in ${HEADER} @ONLY)
