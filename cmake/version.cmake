# Writes a file that tells which version this is and which commit it was built from; leaves it alone when nothing has changed.
# cmake -DVERSION=4.0.0 -DSOURCE=folder -DTEMPLATE=file -DFILE=file -P version.cmake
# A source archive (git archive) has its commit in commit.txt, whatever repository it was unpacked in.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/commit.txt COMMIT REGEX "^commit [0-9a-f]+$")
if(COMMIT)
  string(SUBSTRING "${COMMIT}" 7 10 COMMIT)
else()
  find_program(GIT git)
  if(GIT)
    execute_process(COMMAND ${GIT} -C ${SOURCE} describe --always --dirty --match= --abbrev=10
                    OUTPUT_VARIABLE COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  endif()
endif()
string(REPLACE "." "," NUMBERS "${VERSION}.0")  # as resources of Windows want it
configure_file(${TEMPLATE} ${FILE} @ONLY)
